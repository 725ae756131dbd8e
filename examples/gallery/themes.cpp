#include "themes.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/host/component.h>

#include <QHash>
#include <QVBoxLayout>

using namespace zk;

// Of the examples' sources, which are part of the gallery; see CMakeLists.txt.
void MakeMaterialsAndLights(TZkOglCanvas& canvas);
void MakeTextures(TZkOglCanvas& canvas);
void MakeDragging(TZkOglCanvas& canvas);
void MakeReferences(TZkOglCanvas& canvas);
void MakeUserDrawing(TZkOglCanvas& canvas);
void MakePolygons(TZkOglCanvas& canvas);
QWidget* MakePlaneCanvas();

namespace gallery {

ThemePage::ThemePage(const QString& title, const QString& hint, void (*make)(TZkOglCanvas&), QWidget* parent)
    : QWidget(parent), makeScene_(make), title_(title), hint_(hint) {}

ThemePage::ThemePage(const QString& title, const QString& hint, QWidget* (*make)(), QWidget* parent)
    : QWidget(parent), makeWidget_(make), title_(title), hint_(hint) {}

bool ThemePage::Fill() {
    if (layout())
        return false;
    if (makeWidget_) {
        put(makeWidget_());
        return true;
    }
    control_ = new TZKOglControl;
    control_->setMinimumSize(120, 90);
    put(control_);
    canvas_ = new TZkOglCanvas(this);
    canvas_->SetWinControl(control_);
    const ChangeBracket bracket(canvas_);
    makeScene_(*canvas_);
    canvas_->SetUnitsPerCm(canvas_->GetUnitsPerCm() * 1.6);  // the page is larger than the window of the example
    NameComponents(*this);
    return true;
}

void ThemePage::put(QWidget* content) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(content);
}

std::vector<ThemePage*> MakeThemePages(QWidget* parent) {
    const QString look = ThemePage::tr("Click a shape to see its properties, and change them");
    return {
        new ThemePage(ThemePage::tr("M&aterials"), look, MakeMaterialsAndLights, parent),
        new ThemePage(ThemePage::tr("Te&xtures"), look, MakeTextures, parent),
        new ThemePage(ThemePage::tr("&Dragging"), ThemePage::tr("Drag the shapes over the floor"), MakeDragging,
                      parent),
        new ThemePage(ThemePage::tr("Refere&nces"), ThemePage::tr("Change one petal, and all daisies change with it"),
                      MakeReferences, parent),
        new ThemePage(ThemePage::tr("Dra&wing"), ThemePage::tr("Click the knot to tie another one"), MakeUserDrawing,
                      parent),
        new ThemePage(ThemePage::tr("Poly&gons"), ThemePage::tr("Where it rains on the island"), MakePolygons, parent),
        new ThemePage(ThemePage::tr("&Plane"), ThemePage::tr("Drawn without OpenGL"), MakePlaneCanvas, parent),
    };
}

void NameComponents(QObject& owner) {
    QHash<QString, int> counts;
    for (QObject* child : owner.findChildren<QObject*>()) {
        if (!dynamic_cast<ComponentBase*>(child) || !child->objectName().isEmpty())
            continue;
        QString kind = QString::fromLatin1(child->metaObject()->className()).section(QLatin1String("::"), -1).toLower();
        kind.remove(QLatin1String("tzkogl"));
        child->setObjectName(kind + QString::number(++counts[kind]));
    }
}

}  // namespace gallery
