#include "glform.h"

#include <zk/_zkoglcanvas/control.h>

#include <QMetaProperty>
#include <QMouseEvent>
#include <QTest>
#include <gtest/gtest.h>

#include <limits>

using namespace zk;
using namespace zk::test;

namespace {

/// Notes every mouse event of a control and a shape, in order.
struct Notes {
    explicit Notes(TZKOglControl* control) {
        QObject::connect(
            control, &TZKOglControl::OnMouseDown,
            [this](QObject*, Qt::MouseButton b, TShiftState s, int x, int y) { note("control down", b, s, x, y); });
        QObject::connect(control, &TZKOglControl::OnMouseMove,
                         [this](QObject*, TShiftState s, int x, int y) { note("control move", 0, s, x, y); });
        QObject::connect(
            control, &TZKOglControl::OnMouseUp,
            [this](QObject*, Qt::MouseButton b, TShiftState s, int x, int y) { note("control up", b, s, x, y); });
    }
    void Watch(TCustomShape* shape) {
        QObject::connect(
            shape, &TCustomShape::OnMouseDown,
            [this](QObject*, Qt::MouseButton b, TShiftState s, int x, int y) { note("shape down", b, s, x, y); });
        QObject::connect(shape, &TCustomShape::OnMouseMove,
                         [this](QObject*, TShiftState s, int x, int y) { note("shape move", 0, s, x, y); });
        QObject::connect(
            shape, &TCustomShape::OnMouseUp,
            [this](QObject*, Qt::MouseButton b, TShiftState s, int x, int y) { note("shape up", b, s, x, y); });
    }
    void note(const char* what, int button, TShiftState shift, int x, int y) {
        texts += QString("%1 %2 %3 (%4, %5)").arg(what).arg(button).arg(int(shift)).arg(x).arg(y);
    }
    QStringList Take() { return std::exchange(texts, {}); }
    /// Without the moves, which come before a press where the pointer was elsewhere.
    QStringList TakeButtons() {
        QStringList buttons = Take();
        buttons.removeIf([](const QString& text) { return text.contains(" move "); });
        return buttons;
    }
    QStringList texts;
};

}  // namespace

TEST(Control, DefaultsAndPublishedProperties) {
    TZKOglControl control;
    EXPECT_EQ(control.size(), QSize(150, 150));
    const QMetaObject* meta = control.metaObject();
    QStringList names;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        names += meta->property(i).name();
    EXPECT_EQ(names, (QStringList{"BevelKind", "BevelWidth", "BevelEdges", "BevelInner", "Align"}));
    EXPECT_EQ(control.property("BevelKind").toInt(), 2);
    EXPECT_EQ(control.property("BevelWidth").toInt(), 1);
    EXPECT_EQ(control.GetBevelEdges().toInt(), 15);
    EXPECT_EQ(control.property("BevelInner").toInt(), 2);
    EXPECT_EQ(control.property("Align").toInt(), 0);
    EXPECT_EQ(control.Canvas(), nullptr);
    QStringList signalNames;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        if (meta->method(i).methodType() == QMetaMethod::Signal)
            signalNames += meta->method(i).name();
    EXPECT_EQ(signalNames,
              (QStringList{"OnMouseDown", "OnMouseMove", "OnMouseUp", "OnResize", "OnPaint", "OnCurrentShape"}));
}

TEST(Control, TheFrameTakesItsShareOfTheClientArea) {
    GlForm form({200, 100});
    form.control->SetBevelKind(bevel::bkSoft);
    EXPECT_EQ(form.control->contentsRect(), QRect(2, 2, 196, 96));
    EXPECT_EQ(form.canvas->GetWidth(), 196);
    EXPECT_EQ(form.canvas->GetHeight(), 96);
    form.control->SetBevelWidth(5);
    EXPECT_EQ(form.control->contentsRect(), QRect(10, 10, 180, 80));
    form.control->SetBevelInner(bevel::bvNone);
    EXPECT_EQ(form.control->contentsRect(), QRect(5, 5, 190, 90));
    form.control->SetBevelEdges(bevel::beLeft);
    EXPECT_EQ(form.control->contentsRect(), QRect(5, 0, 195, 100));
    form.control->SetBevelEdges(bevel::beRight | bevel::beBottom);
    EXPECT_EQ(form.control->contentsRect(), QRect(0, 0, 195, 95));
    form.control->SetBevelEdges(bevel::beTop);
    EXPECT_EQ(form.control->contentsRect(), QRect(0, 5, 200, 95));
    // Coordinates are those of the client area.
    form.control->SetBevelEdges(TBevelEdges(15));
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {0.5, 0.5, 0.5}, {-3, -0.25, 0});
    Notes notes(form.control);
    notes.Watch(box);
    EXPECT_EQ(form.PixelAt({12, 45}), QColor(254, 0, 0));
    form.Click({12, 45});
    EXPECT_EQ(notes.TakeButtons(), (QStringList{"shape down 1 8 (12, 45)", "control down 1 8 (12, 45)",
                                                "shape up 1 0 (12, 45)", "control up 1 0 (12, 45)"}));
}

TEST(Control, TheShapeUnderThePointerComesBeforeTheControl) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    Notes notes(form.control);
    notes.Watch(box);
    QWindow* window = form.MouseWindow();
    QTest::mouseMove(window, QPoint(150, 150));
    GlForm::Settle();
    EXPECT_EQ(notes.Take(), (QStringList{"shape move 0 0 (150, 150)", "control move 0 0 (150, 150)"}));
    QTest::mousePress(window, Qt::RightButton, Qt::ControlModifier, QPoint(150, 150));
    EXPECT_EQ(notes.TakeButtons(), (QStringList{"shape down 2 20 (150, 150)", "control down 2 20 (150, 150)"}));
    QTest::mouseRelease(window, Qt::RightButton, Qt::ControlModifier, QPoint(20, 20));
    EXPECT_EQ(notes.Take().last(), "control up 2 4 (20, 20)");
    form.Click({20, 20});
    EXPECT_EQ(notes.TakeButtons(), (QStringList{"control down 1 8 (20, 20)", "control up 1 0 (20, 20)"}));

    form.canvas->SetSelectEnabled(false);
    form.Click({150, 150});
    EXPECT_EQ(notes.TakeButtons(), (QStringList{"control down 1 8 (150, 150)", "control up 1 0 (150, 150)"}));
    form.canvas->SetSelectEnabled(true);
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, QPoint(150, 150));
    const QStringList doubleClick = notes.Take();
    EXPECT_TRUE(doubleClick.contains("shape down 1 72 (150, 150)")) << doubleClick.join(" | ").toStdString();
}

TEST(Control, AControlWithoutCanvasStillTellsItsEvents) {
    GlForm form;
    form.canvas->SetWinControl(nullptr);
    Notes notes(form.control);
    int resized = 0;
    QObject::connect(form.control, &TZKOglControl::OnResize, [&](QObject* sender) {
        EXPECT_EQ(sender, form.control);
        ++resized;
    });
    int painted = 0;
    QObject::connect(form.control, &TZKOglControl::OnPaint, [&] { ++painted; });
    form.Click({10, 10});
    EXPECT_EQ(notes.TakeButtons(), (QStringList{"control down 1 8 (10, 10)", "control up 1 0 (10, 10)"}));
    form.control->resize(120, 130);
    EXPECT_EQ(resized, 1);
    form.control->PAint();
    form.control->repaint();
    GlForm::Settle();
    EXPECT_EQ(painted, 0);
    EXPECT_EQ(form.canvas->GetWidth(), 300) << "the size is taken when the canvas binds";
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(form.canvas->GetWidth(), 120);
    EXPECT_EQ(form.canvas->GetHeight(), 130);
    form.control->PAint();
    EXPECT_EQ(painted, 0) << "a control never tells OnPaint";
}

TEST(Control, AResizeIsOneRepaintAndComesAfterItsEvent) {
    GlForm form;
    int widthInEvent = 0;
    QObject::connect(form.control, &TZKOglControl::OnResize, [&] { widthInEvent = form.canvas->GetWidth(); });
    form.TakeSwaps();
    form.control->QWidget::resize(200, 220);
    EXPECT_EQ(form.TakeSwaps(), 2);
    EXPECT_EQ(widthInEvent, 300);
    EXPECT_EQ(form.canvas->GetWidth(), 200);
    EXPECT_EQ(form.canvas->GetHeight(), 220);
}

TEST(Control, Alignment) {
    QWidget host;
    host.resize(400, 300);
    auto* control = new TZKOglControl(&host);
    control->resize(100, 50);
    const auto aligned = [&](TAlign align) {
        control->SetAlign(align);
        return control->geometry();
    };
    EXPECT_EQ(aligned(bevel::alTop), QRect(0, 0, 400, 50));
    EXPECT_EQ(aligned(bevel::alBottom), QRect(0, 250, 400, 50));
    control->resize(100, 50);
    EXPECT_EQ(aligned(bevel::alLeft), QRect(0, 0, 100, 300));
    EXPECT_EQ(aligned(bevel::alRight), QRect(300, 0, 100, 300));
    EXPECT_EQ(aligned(bevel::alClient), QRect(0, 0, 400, 300));
    host.resize(500, 200);
    QCoreApplication::sendPostedEvents();
    host.show();
    EXPECT_EQ(control->geometry(), QRect(0, 0, 500, 200));
    EXPECT_EQ(aligned(bevel::alNone), QRect(0, 0, 500, 200));
    host.resize(100, 100);
    EXPECT_EQ(control->geometry(), QRect(0, 0, 500, 200));
}

TEST(Control, AHandlerMayDeleteAnythingOrThrow) {
    for (int what = 0; what < 5; ++what) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        QPointer<TZKOglBox> box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        QPointer<TZKOglControl> control = form.control;
        int controlDown = 0;
        QObject::connect(control, &TZKOglControl::OnMouseDown, [&] { ++controlDown; });
        QObject::connect(box, &TCustomShape::OnMouseDown, [&] {
            if (what == 0)
                delete box;
            else if (what == 1)
                delete scene;
            else if (what == 2)
                delete std::exchange(form.canvas, nullptr);
            else if (what == 3)
                control->deleteLater();
            else
                throw std::runtime_error("handler gave up");
        });
        form.Click({150, 150});
        GlForm::Settle();
        EXPECT_EQ(form.messages.Take(), what == 4 ? QStringList{"handler gave up"} : QStringList());
        EXPECT_EQ(controlDown, what == 4 ? 0 : 1);
        if (control && form.canvas)
            form.Click({150, 150});
        form.messages.Take();
    }
}

TEST(Control, AFrameMayBeWiderThanAnything) {
    GlForm form;
    form.control->SetBevelWidth(std::numeric_limits<int>::max());
    for (const TBevelKind kind : {bevel::bkTile, bevel::bkSoft, bevel::bkFlat}) {
        form.control->SetBevelKind(kind);
        form.control->repaint();
    }
    EXPECT_EQ(form.control->GetBevelWidth(), std::numeric_limits<int>::max());
    EXPECT_EQ(form.canvas->GetWidth(), 0);
    form.control->SetBevelWidth(1);
    EXPECT_EQ(form.canvas->GetWidth(), 296);
}

TEST(Control, MayBeSmallerThanItsFrame) {
    GlForm form;
    form.control->SetBevelKind(bevel::bkTile);
    form.control->SetBevelWidth(9);
    form.control->QWidget::resize(20, 30);
    GlForm::Settle();
    EXPECT_EQ(form.canvas->GetWidth(), 0);
    EXPECT_EQ(form.canvas->GetHeight(), 0);
    form.canvas->SetWinControl(nullptr);
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(form.canvas->GetWidth(), 0);
    form.control->QWidget::resize(136, 86);
    GlForm::Settle();
    EXPECT_EQ(form.canvas->GetWidth(), 100);
    EXPECT_EQ(form.canvas->GetHeight(), 50);
}
