#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>
#include <zk/host/glsurface.h>
#include <zk/host/message.h>

#include <QAccessible>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

using namespace zk;

// Run without a display: the window system refuses every OpenGL context.

namespace {

struct Form {
    Form() {
        control = new TZKOglControl(&window);
        canvas = new TZkOglCanvas(&window);
        canvas->SetWinControl(control);
        window.resize(400, 300);
        control->setGeometry(0, 0, 300, 200);
        window.show();
        QCoreApplication::processEvents();
    }
    QWidget window;
    TZKOglControl* control = nullptr;
    TZkOglCanvas* canvas = nullptr;
};

}  // namespace

TEST(NoOpenGl, TheControlSaysWhatIsMissing) {
    Form form;
    ASSERT_FALSE(form.canvas->HasContext()) << "this test must run where there is no OpenGL";
    const QString notice = form.canvas->Getdc()->Notice();
    EXPECT_TRUE(notice.startsWith("No picture can be shown here: ")) << notice.toStdString();
    EXPECT_TRUE(notice.contains("OpenGL 1.1")) << notice.toStdString();
    const auto* label = form.control->findChild<QLabel*>();
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->isVisible());
    EXPECT_EQ(label->geometry(), form.control->contentsRect());
    form.control->QWidget::resize(200, 100);
    EXPECT_EQ(label->geometry(), form.control->contentsRect());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(form.control)->text(QAccessible::Description), notice);
    // the words can be read: not all pixels of the control are alike
    const QImage image = form.control->grab().toImage();
    int different = 0;
    for (int y = 10; y < image.height() - 10; ++y)
        for (int x = 10; x < image.width() - 10; ++x)
            different += image.pixel(x, y) != image.pixel(10, 10);
    EXPECT_GT(different, 50);
}

TEST(NoOpenGl, EverythingElseGoesOn) {
    QStringList messages;
    const MessageHandler old =
        SetMessageHandler([&](const std::string& text) { messages += QString::fromStdString(text); });
    {
        Form form;
        auto* scene = new TZKOglScene(&form.window);
        auto* box = new TZKOglBox(&form.window);
        auto* shape = new TZKOglShape(&form.window);
        auto* light = new TZKOglLight(&form.window);
        int pressed = 0;
        QObject::connect(form.control, &TZKOglControl::OnMouseDown, [&] { ++pressed; });
        scene->SetZkOglCanvas(form.canvas);
        box->SetDisplayList(scene);
        shape->SetDisplayList(scene);
        light->SetZkOglCanvas(form.canvas);
        light->SetEnabled(true);
        light->SetPosition({1, 2, 3});
        light->Update();
        box->SetA(3);
        box->getAttributes()->getMaterial()->SetDiffuse(0xFF);
        box->Play();
        box->Doplay();
        scene->Play();
        scene->SetVisible(false);
        scene->SetVisible(true);
        scene->DoUpdateNow();
        form.canvas->SetBlickWinkel(30);
        form.canvas->SetZoomFactor(2);
        form.canvas->SetTranslation({1, 2, 3});
        form.canvas->Setdrehwinkel(10);
        form.canvas->SetColor(0xFFFFFF);
        form.canvas->SetLightModelTwoSided(true);
        form.canvas->SetTriangleResolution(1);
        form.canvas->SetClockWise(false);
        form.canvas->EnableClipplane(0, {0, 0, 0}, {1, 0, 0});
        form.canvas->DisableClipplane(-1);
        form.canvas->SetHit(1);
        form.canvas->readSelectBuffer();
        form.canvas->PolyPolyline3D(TlistOFxyzArray());
        form.canvas->Refresh();
        EXPECT_FALSE(form.canvas->Select(10, 10));
        EXPECT_TRUE(form.canvas->Picture({10, 10}).isNull());
        EXPECT_FALSE(form.canvas->CheckCurrent());
        QTest::mouseClick(form.control, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
        EXPECT_EQ(pressed, 1);
        form.control->hide();
        form.control->show();
        form.control->PAint();
        form.canvas->SetWinControl(nullptr);
        EXPECT_EQ(form.canvas->Getdc(), nullptr);
        EXPECT_TRUE(form.canvas->Picture({10, 10}).isNull());
        form.canvas->SetWinControl(form.control);
        delete box;
        delete light;
        delete form.control;
        EXPECT_EQ(form.canvas->GetWinControl(), nullptr);
    }
    SetMessageHandler(old);
    EXPECT_EQ(messages, QStringList());
}
