#pragma once

#include <zk/_zkcomtypes/materialkind.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkogltools/box.h>

#include <QObject>
#include <QStringList>

#include <vector>

namespace gallery {

/// The boxes of the scene: made from a table, moved and coloured by the user.
///
/// In the scene's own frame x is to the right, y up and z to the front; the floor lies at y = 0.
class Boxes : public QObject {
    Q_OBJECT
  public:
    /// Builds all boxes in `scene`, which has its canvas. `form` owns them, as it owns the other components.
    Boxes(zk::TZKOglScene* scene, QObject* form);

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
        int material;
        bool lifted;
    };

    void addFloor(zk::TZKOglScene* scene, QObject* form);
    double heightOf(int index) const;
    void showPlaces();
    void showMaterial(int index);

    zk::TZkOglCanvas* canvas_;
    std::vector<Item> items_;
};

}  // namespace gallery
