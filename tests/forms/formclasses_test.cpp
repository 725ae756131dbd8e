#include "print.h"

#include <zk/forms/formclasses.h>
#include <zk/host/componentref.h>

#include <QFile>
#include <QMetaProperty>
#include <QStringList>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace zk {
namespace {

TEST(FormClassesTest, FifteenInTheOrderOfTheirPage) {
    QStringList names;
    for (const FormClass& one : FormClasses())
        names << one.ShortName();
    EXPECT_EQ(names, (QStringList{"TZKOglShape", "TZKOglBox", "TZKOglSphere", "TZKOglPlane", "TZKOglCylinder",
                                  "TZKOglRefShape", "TZkOglCanvas", "TZKOglControl", "TZKOglScene", "TZKOglRefScene",
                                  "TZKOglLight", "TZKOglWay", "TZKOglNav", "TZkOglSequencer", "TZkOglTimer"}));
}

TEST(FormClassesTest, EachMakesOneOfItsClassAndHasAHeader) {
    QWidget form;
    for (const FormClass& one : FormClasses()) {
        const std::unique_ptr<QObject> made(one.Make(&form));
        EXPECT_STREQ(made->metaObject()->className(), one.Name);
        EXPECT_EQ(made->metaObject(), one.Class);
        EXPECT_EQ(made->isWidgetType(), one.IsWidget) << one.Name;
        EXPECT_EQ(made->parent(), &form);
        QFile header(QStringLiteral(ZKOGL_SOURCE "/src/") + QString::fromLatin1(one.Header));
        ASSERT_TRUE(header.open(QIODevice::ReadOnly)) << one.Header;
        EXPECT_TRUE(header.readAll().contains("_API " + one.ShortName().toLatin1() + " : public")) << one.Header;
        const std::unique_ptr<QObject> orphan(one.Make(nullptr));
        EXPECT_EQ(orphan->parent(), nullptr);
    }
}

TEST(FormClassesTest, AreFoundByNameWithAndWithoutNamespace) {
    for (const FormClass& one : FormClasses()) {
        EXPECT_EQ(FindFormClass(QString::fromLatin1(one.Name)), &one);
        EXPECT_EQ(FindFormClass(one.ShortName()), &one);
    }
    for (const char* name :
         {"", "zk::", "TCustomShape", "zk::TEllipseWay", "zk::zk::TZKOglBox", "tzkoglbox", "QWidget"})
        EXPECT_EQ(FindFormClass(QString::fromLatin1(name)), nullptr) << name;
}

TEST(FormClassesTest, ReferencesTellWhatTheyTake) {
    QStringList kinds;
    for (const FormClass& one : FormClasses()) {
        for (int i = 0; i < one.Class->propertyCount(); ++i) {
            const QMetaProperty property = one.Class->property(i);
            const QMetaObject* kind = ReferenceKind(one.Class, property.name());
            EXPECT_EQ(kind != nullptr, property.metaType() == QMetaType::fromType<ComponentRef>()) << property.name();
            if (kind)
                kinds << one.ShortName() + '.' + property.name() + ": " + kind->className();
        }
    }
    EXPECT_EQ(kinds, (QStringList{
                         "TZKOglShape.Scene: zk::TDisplayList", "TZKOglBox.Scene: zk::TDisplayList",
                         "TZKOglSphere.Scene: zk::TDisplayList", "TZKOglPlane.Scene: zk::TDisplayList",
                         "TZKOglCylinder.Scene: zk::TDisplayList", "TZKOglRefShape.Scene: zk::TDisplayList",
                         "TZKOglRefShape.ReferenceShape: zk::TCustomShape", "TZkOglCanvas.WinControl: QWidget",
                         "TZKOglScene.ZkOglCanvas: zk::TZkOglCanvas", "TZKOglRefScene.ZkOglCanvas: zk::TZkOglCanvas",
                         "TZKOglRefScene.ReferenceScene: zk::TZKOglScene", "TZKOglLight.ZkOglCanvas: zk::TZkOglCanvas",
                         "TZKOglNav.ZkOglCanvas: zk::TZkOglCanvas", "TZkOglTimer.Sequencer: zk::TZkOglSequencer"}));
}

}  // namespace
}  // namespace zk
