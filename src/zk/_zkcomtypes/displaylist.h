#pragma once

#include <zk/export.h>
#include <zk/host/component.h>

#include <QPointer>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace zk {

class TZkShape;

/// An ordered set of shapes that are played one after the other. It does not own them.
///
/// A shape that is removed leaves the list when the list is told (it has the same owner, or asked for it). One that is
/// deleted without the list being told leaves it all the same: the list never plays or returns a shape that is gone.
class ZKCOMTYPES_API TDisplayList : public TComponent {
    Q_OBJECT
  public:
    explicit TDisplayList(QObject* owner = nullptr);
    ~TDisplayList() override;

    /// Appends the shape, also one that is in the list already, and invalidates. Null is not added. A shape's own
    /// reference is not touched: use `TZkShape::SetDisplayList`.
    void AddShape(TZkShape* S);

    /// Takes the first occurrence out, if any, and invalidates in every case.
    void RemoveShape(TZkShape* S);

    /// The shape at `Index`, from 0; raises `EListError` outside the list. Never null.
    TZkShape* GetZkShape(int Index) const;
    /// How many entries the list has; a shape that is in it twice counts twice.
    int GetShapeCount() const;

    /// The position of a component in the list, or −1.
    int INdexOfShape(const QObject* C) const;

    /// On removal of a shape, takes its first occurrence out, without invalidating.
    void Notification(QObject* component, TOperation operation) override;

    /// Stores the flag and nothing else. False at start.
    virtual void SetVisible(bool Value);
    bool GetVisible() const { return visible_; }

    /// If visible: raises `OnPlay`, then plays the shapes that are in the list at that moment, in order. Handlers and
    /// shapes may add, remove and delete shapes and the list itself: a shape that leaves before its turn is not played,
    /// one that is added meanwhile waits for the next time, none is skipped or played twice.
    virtual void Play();

    /// What was compiled from the shapes is out of date. Nothing is compiled here: does nothing.
    virtual void Invalidate();

  Q_SIGNALS:
    /// The list is about to be played, before its first shape.
    void OnPlay(QObject* sender);

  protected:
    /// One shape's turn in `Play`; `index` counts the entries of the list, those included that left while it is played.
    virtual void PlayShape(std::size_t index, TZkShape& shape);
    /// Which entry's turn it is after those before `index` have had theirs: `index` itself, or a later one if a
    /// descendant knows that the shapes between have nothing to do. `count` entries are played.
    virtual std::size_t NextToPlay(std::size_t index, std::size_t count);
    /// The shape of an entry, or null for one that has left.
    TZkShape* Entry(std::size_t index) const;

    bool visible_ = false;

  private:
    void removeFirst(const QObject* shape);
    void shapeDestroyed(QObject* shape);
    void pack();

    /// Without null entries, so that an index is a position, except while the list is being played: a shape that leaves
    /// meanwhile leaves a null entry behind, so that the others keep their turns. `holes_` says that there are some.
    std::vector<QPointer<TZkShape>> shapes_;
    /// How many of the entries are of a shape. It is asked at each removal of any component of the same owner.
    std::unordered_map<const QObject*, int> entries_;
    int playing_ = 0;
    bool holes_ = false;
};

}  // namespace zk
