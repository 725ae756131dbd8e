#include "glform.h"

#include <zk/_zkoglextools.h>
#include <zk/forms.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

/// The form of the example, shown.
class FormExample : public testing::Test {
  protected:
    FormExample() : form(loader.LoadFile(FORM_FILE)) {
        form->move(30, 30);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(form.get()));
        GlForm::Settle();
    }
    ~FormExample() override { EXPECT_EQ(messages.Take(), QStringList()); }

    template <class T>
    T* find(const char* name) {
        auto* found = form->findChild<T*>(QString::fromLatin1(name));
        if (!found)
            throw std::runtime_error(name);
        return found;
    }
    QImage picture() {
        GlForm::Settle();
        auto* control = find<TZKOglControl>("control");
        const QRect area(control->mapToGlobal(control->contentsRect().topLeft()), control->contentsRect().size());
        return form->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    }
    /// The left button at the middle of a shape's place.
    void click(const TXYZ& point) {
        const TXYI pixel = find<TZkOglCanvas>("canvas")->WtoPixel(point);
        auto* control = find<TZKOglControl>("control");
        QTest::mouseClick(control, Qt::LeftButton, {}, control->contentsRect().topLeft() + QPoint(pixel.x, pixel.y));
        GlForm::Settle();
    }

    MessageCatcher messages;
    FormLoader loader;
    std::unique_ptr<QWidget> form;
};

TEST_F(FormExample, AClickOnTheBoxSwitchesTheLight) {
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

TEST_F(FormExample, TheControlsDriveThePicture) {
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

TEST(FormExampleProgram, ShowsTheFormAndSaysWhatIsWrongWithOne) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("form.png");
    QProcess process;
    // Without it Qt says so on standard error, on which nothing else is to be.
    const QTemporaryDir runtime;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    process.setProcessEnvironment(environment);
    process.start(FORM_PROGRAM, {"--picture", file});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(), QByteArray());
    EXPECT_EQ(QImage(file).size(), QSize(620, 420));

    QFile form(FORM_FILE);
    QFile other(folder.filePath("other.ui"));
    ASSERT_TRUE(form.open(QIODevice::ReadOnly) && other.open(QIODevice::WriteOnly));
    other.write(form.readAll().replace("<cstring>scene</cstring>", "<cstring>scenery</cstring>"));
    other.close();
    process.start(FORM_PROGRAM, {"--picture", file, other.fileName()});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(),
              "box.Scene = \"scenery\": there is no component of that name\n"
              "cone.Scene = \"scenery\": there is no component of that name\n");
    process.start(FORM_PROGRAM, {folder.filePath("none.ui")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 1);
}

}  // namespace
