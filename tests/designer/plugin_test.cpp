#include "formeditor.h"

#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QPluginLoader>
#include <QSet>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

const QStringList classNames = {
    "zk::TZKOglShape",    "zk::TZKOglBox",    "zk::TZKOglSphere",  "zk::TZKOglPlane",     "zk::TZKOglCylinder",
    "zk::TZKOglRefShape", "zk::TZkOglCanvas", "zk::TZKOglControl", "zk::TZKOglScene",     "zk::TZKOglRefScene",
    "zk::TZKOglLight",    "zk::TZKOglWay",    "zk::TZKOglNav",     "zk::TZkOglSequencer", "zk::TZkOglTimer",
};

class PluginTest : public testing::Test {
  protected:
    void SetUp() override {
        QObject* const instance = loader_.instance();
        ASSERT_TRUE(instance) << loader_.errorString().toStdString();
        auto* const collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(instance);
        ASSERT_TRUE(collection);
        entries_ = collection->customWidgets();
    }

    QPluginLoader loader_{QStringLiteral(ZKOGL_PLUGIN)};
    QList<QDesignerCustomWidgetInterface*> entries_;
};

TEST_F(PluginTest, HoldsTheFifteenComponentsInOrder) {
    QStringList names;
    for (const auto* entry : entries_)
        names.append(entry->name());
    EXPECT_EQ(names, classNames);
}

TEST_F(PluginTest, EveryEntrySaysWhatItIs) {
    QSet<QString> toolTips;
    for (const auto* entry : entries_) {
        const std::string name = entry->name().toStdString();
        EXPECT_EQ(entry->group(), "ZKOgl") << name;
        EXPECT_FALSE(entry->toolTip().isEmpty()) << name;
        EXPECT_GT(entry->whatsThis().size(), entry->toolTip().size()) << name;
        EXPECT_FALSE(entry->isContainer()) << name;
        toolTips.insert(entry->toolTip());
    }
    EXPECT_EQ(toolTips.size(), entries_.size());
}

TEST_F(PluginTest, EveryIncludeFileIsThereAndHoldsTheClass) {
    for (const auto* entry : entries_) {
        const QString include = entry->includeFile();
        ASSERT_TRUE(include.startsWith('<') && include.endsWith('>')) << include.toStdString();
        QFile file(QStringLiteral(ZKOGL_HEADERS "/") + include.mid(1, include.size() - 2));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << include.toStdString();
        EXPECT_TRUE(file.readAll().contains(QByteArray("_API ") + entry->name().mid(4).toLatin1() + " :"))
            << include.toStdString();
    }
}

TEST_F(PluginTest, EveryPictureIsOneOfItsOwnInSixteenColours) {
    QSet<QByteArray> pictures;
    for (const auto* entry : entries_) {
        const QString resource = QStringLiteral(":/zkogl/%1.png").arg(entry->name().mid(4).toUpper());
        const QImage picture(resource);
        ASSERT_EQ(picture.size(), QSize(20, 20)) << resource.toStdString();
        EXPECT_LE(picture.colorCount(), 16);
        EXPECT_GT(picture.colorCount(), 0) << "with a palette";
        QSet<QRgb> used;
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 20; ++x)
                used.insert(picture.pixel(x, y));
        }
        EXPECT_GE(used.size(), 4) << resource.toStdString();
        EXPECT_EQ(entry->icon().availableSizes(), QList<QSize>{QSize(20, 20)});
        EXPECT_EQ(entry->icon().pixmap(20, 20).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  picture.convertToFormat(QImage::Format_ARGB32_Premultiplied));
        pictures.insert(QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    EXPECT_EQ(pictures.size(), 15);
}

TEST_F(PluginTest, EveryEntryMakesWhatSaysItsOwnClassName) {
    for (auto* entry : entries_) {
        QWidget parent;
        QWidget* const widget = entry->createWidget(&parent);
        ASSERT_TRUE(widget);
        EXPECT_EQ(widget->parentWidget(), &parent);
        EXPECT_EQ(QString::fromLatin1(widget->metaObject()->className()), entry->name());
        EXPECT_TRUE(widget->inherits("QWidget"));
        const std::unique_ptr<QWidget> alone(entry->createWidget(nullptr));
        ASSERT_TRUE(alone);
        EXPECT_FALSE(alone->isVisible());
        delete widget;
    }
}

TEST(FormEditorTest, TheWidgetBoxHasThePage) {
    const FormEditor editor;
    const QDesignerWidgetBoxInterface* const box = editor.Core()->widgetBox();
    QStringList names;
    for (int i = 0; i < box->categoryCount(); ++i) {
        const auto category = box->category(i);
        if (category.name() != "ZKOgl")
            continue;
        for (int j = 0; j < category.widgetCount(); ++j)
            names.append(category.widget(j).name());
    }
    QStringList expected;
    for (const QString& name : classNames)
        expected.append(name.mid(4));
    EXPECT_EQ(names, expected);
}

TEST(FormEditorTest, TheDataBaseOfWidgetsHasThemAsWidgetsOfThePlugin) {
    const FormEditor editor;
    const QDesignerWidgetDataBaseInterface* const dataBase = editor.Core()->widgetDataBase();
    for (const QString& name : classNames) {
        const int index = dataBase->indexOfClassName(name);
        ASSERT_GE(index, 0) << name.toStdString();
        const auto* const item = dataBase->item(index);
        EXPECT_TRUE(item->isCustom());
        EXPECT_FALSE(item->isContainer());
        EXPECT_EQ(QFileInfo(item->pluginPath()).fileName(), QFileInfo(QStringLiteral(ZKOGL_PLUGIN)).fileName());
    }
}

}  // namespace
}  // namespace zk::test
