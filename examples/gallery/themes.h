#pragma once

#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/control.h>

#include <QString>
#include <QWidget>

#include <vector>

namespace gallery {

/// A page with what one of the examples shows, made by the example's own code when it is shown first.
class ThemePage : public QWidget {
    Q_OBJECT
  public:
    /// Null as long as the page is empty, and where it has no OpenGL and so no control either.
    zk::TZKOglControl* Control() const { return control_; }
    zk::TZkOglCanvas* Canvas() const { return canvas_; }
    /// The name on the page's tab, with its key, and what can be done there.
    QString Title() const { return title_; }
    QString Hint() const { return hint_; }

    /// Fills the page, the first time. True if it was the first.
    bool Fill();

    /// A page whose picture `make` puts together on the canvas that it gets.
    ThemePage(const QString& title, const QString& hint, void (*make)(zk::TZkOglCanvas&), QWidget* parent);
    /// A page that is a widget of the example's.
    ThemePage(const QString& title, const QString& hint, QWidget* (*make)(), QWidget* parent);

  private:
    void put(QWidget* content);

    void (*makeScene_)(zk::TZkOglCanvas&) = nullptr;
    QWidget* (*makeWidget_)() = nullptr;
    QString title_;
    QString hint_;
    zk::TZKOglControl* control_ = nullptr;
    zk::TZkOglCanvas* canvas_ = nullptr;
};

/// All of them, owned by `parent`.
std::vector<ThemePage*> MakeThemePages(QWidget* parent);

/// Gives the components among what an object owns that have no name one of their own: "box1", "box2", "scene1".
void NameComponents(QObject& owner);

}  // namespace gallery
