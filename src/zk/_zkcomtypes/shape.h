#pragma once

#include <zk/_zkcomtypes/displaylist.h>
#include <zk/export.h>
#include <zk/host/component.h>

#include <QPointer>

namespace zk {

/// Something that a display list plays. It belongs to at most one list, and neither owns the other.
class ZKCOMTYPES_API TZkShape : public TComponent {
    Q_OBJECT
  public:
    explicit TZkShape(QObject* owner = nullptr);

    /// Does not leave the display list by itself: a list of the same owner is told of the removal, any other finds the
    /// shape gone.
    ~TZkShape() override;

    /// The list that the shape belongs to, or null; null as well after the list was deleted.
    TDisplayList* GetDisplayList() const { return displayList_; }

    /// Leaves the current list and enters `L` at its end; null leaves only. Both lists are invalidated. Nothing is
    /// compared: the current list again moves the shape to the end of it and invalidates it twice.
    virtual void SetDisplayList(TDisplayList* L);

    /// Drops the reference when the list is removed.
    void Notification(QObject* component, TOperation operation) override;

    /// Raises `OnPlay`. An override draws, and ends in this one; nothing may follow that needs the shape, which a
    /// handler may have deleted.
    virtual void Play();

  Q_SIGNALS:
    /// The shape is being played. What a handler draws belongs to it.
    void OnPlay(QObject* sender);

  protected:
    QPointer<TDisplayList> displayList_;
};

}  // namespace zk
