#pragma once

#include <zk/_zkcomtypes/materialkind.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkogltools/box.h>

#include <QObject>
#include <QStringList>

#include <vector>

namespace gallery {

/// What the user does with the boxes of the form: lifts them, and gives them other materials.
///
/// In the scene's own frame x is to the right, y up and z to the front; the floor lies at y = 0.
class Boxes : public QObject {
    Q_OBJECT
  public:
    /// The boxes, in the order of the table in boxes.cpp, each where it stands at the start. The form owns them.
    Boxes(const std::vector<zk::TZKOglBox*>& boxes, zk::TZkOglCanvas* canvas, QObject* form);

    int Count() const { return int(items_.size()); }
    zk::TZKOglBox* At(int index) const { return items_.at(std::size_t(index)).box; }
    /// The place of a shape in the table, -1 for what is not in it (the floor is not).
    int IndexOf(const QObject* shape) const;
    QStringList Names() const;

    /// Where the middle of a box is in the scene.
    zk::TXYZ MiddleOf(int index) const;

    bool IsLifted(int index) const { return items_.at(std::size_t(index)).lifted; }
    /// Lifts a box, with all that stands on it, or puts it back.
    void ToggleLift(int index);

    QString MaterialName(int index) const;
    /// Gives a box the material that follows its own in the list of materials.
    void NextMaterial(int index);

    /// Everything back to the start.
    void Reset();

  private:
    struct Item {
        zk::TZKOglBox* box;
        zk::TXYZ place;  ///< of its corner, at the start
        int material;
        bool lifted;
    };

    double heightOf(int index) const;
    void showPlaces();
    void showMaterial(int index);

    zk::TZkOglCanvas* canvas_;
    std::vector<Item> items_;
};

}  // namespace gallery
