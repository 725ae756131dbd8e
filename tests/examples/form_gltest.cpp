#include "exampledriver.h"

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

template <class T>
T* find(const char* name) {
    auto* found = ExampleWindow()->findChild<T*>(QString::fromLatin1(name));
    if (!found)
        throw std::runtime_error(name);
    return found;
}

QImage picture() {
    return SeenOf(find<TZKOglControl>("control"));
}

/// The left button at the middle of a shape's place.
void click(const TXYZ& point) {
    const TXYI pixel = find<TZkOglCanvas>("canvas")->WtoPixel(point);
    Press(find<TZKOglControl>("control"), {pixel.x, pixel.y});
    Release(find<TZKOglControl>("control"), {pixel.x, pixel.y});
}

TEST(FormExample, AClickOnTheBoxSwitchesTheLight) {
    const QImage lit = picture();
    auto* lamp = find<TZKOglLight>("lamp");
    EXPECT_TRUE(lamp->GetEnabled());
    click({-1.2, 0.2, 0});
    EXPECT_FALSE(find<QCheckBox>("lightSwitch")->isChecked());
    EXPECT_FALSE(lamp->GetEnabled());
    EXPECT_NE(picture(), lit);
    click({-1.2, 0.2, 0});
    EXPECT_TRUE(lamp->GetEnabled());
    EXPECT_EQ(picture(), lit);
    click({1.6, -0.5, 0});
    EXPECT_TRUE(lamp->GetEnabled()) << "the cone does nothing";
    click({0, 2.5, 0});
    EXPECT_TRUE(lamp->GetEnabled()) << "nor does the background";
}

TEST(FormExample, TheControlsDriveThePicture) {
    const QImage before = picture();
    find<QCheckBox>("coneShown")->setChecked(false);
    EXPECT_FALSE(find<TZKOglCylinder>("cone")->GetVisible());
    const QImage without = picture();
    EXPECT_NE(without, before);
    find<QDoubleSpinBox>("zoom")->setValue(2);
    EXPECT_EQ(find<TZkOglCanvas>("canvas")->GetZoomFactor(), 2);
    find<QDoubleSpinBox>("turn")->setValue(30);
    EXPECT_EQ(find<TZKOglScene>("scene")->Getdrehwinkel(), 30);
    const QImage turned = picture();
    EXPECT_NE(turned, without);
    auto* nav = find<TZKOglNav>("nav");
    QTest::keyClick(nav, Qt::Key_Left);
    EXPECT_NE(picture(), turned) << "the navigator turns the view";
    find<QPushButton>("front")->click();
    find<QDoubleSpinBox>("turn")->setValue(0);
    find<QDoubleSpinBox>("zoom")->setValue(1);
    find<QCheckBox>("coneShown")->setChecked(true);
    EXPECT_EQ(picture(), before);
}

}  // namespace
