#include "allcomponents.h"
#include "baseline.h"
#include "glform.h"
#include "glrecorder.h"
#include "ui_allcomponents.h"
#include "ui_faulty.h"

#include <zk/forms.h>

#include <QBuffer>
#include <QFile>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>

namespace zk::test {
namespace {

QByteArray textOf(const QString& form) {
    QFile file(FormFile(form));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

std::unique_ptr<QWidget> loaded(QByteArray text, QWidget* parent = nullptr) {
    QBuffer buffer(&text);
    FormLoader loader;
    std::unique_ptr<QWidget> form(loader.Load(buffer, parent));
    EXPECT_TRUE(loader.Faults().empty());
    return form;
}

struct MadeByUic {
    MadeByUic() : form(std::make_unique<QWidget>()) { ui.setupUi(form.get()); }
    std::unique_ptr<QWidget> form;
    Ui::AllComponents ui;
};

QImage pictureOf(QWidget& form, const char* name = "control") {
    form.move(40, 30);
    form.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
    GlForm::Settle();
    auto* control = form.findChild<TZKOglControl*>(QString::fromLatin1(name));
    const QPoint corner = control->mapToGlobal(control->contentsRect().topLeft());
    const QSize size = control->contentsRect().size();
    return control->screen()->grabWindow(0, corner.x(), corner.y(), size.width(), size.height()).toImage();
}

// The text of a form with its components in another order.
QByteArray reordered(const QByteArray& text, unsigned seed) {
    const QByteArray start = "  <widget class=\"zk::";
    const QByteArray end = "\n  </widget>\n";
    QByteArrayList parts;
    qsizetype at = text.indexOf(start);
    const QByteArray head = text.left(at);
    while (at >= 0 && text.mid(at, start.size()) == start) {
        const qsizetype stop = text.indexOf(end, at) + end.size();
        parts << text.mid(at, stop - at);
        at = stop;
    }
    const QByteArray tail = text.mid(at);
    EXPECT_EQ(parts.size(), 17);
    if (seed == 0) {
        std::reverse(parts.begin(), parts.end());
    } else {
        for (qsizetype i = parts.size() - 1; i > 0; --i) {
            seed = seed * 1664525U + 1013904223U;
            parts.swapItemsAt(i, (seed >> 16) % (i + 1));
        }
    }
    return head + parts.join() + tail;
}

// Only the order in which things were made may differ.
QStringList withoutOrder(QStringList values) {
    values.erase(std::remove_if(values.begin(), values.end(), [](const QString& v) { return v.contains(" has "); }),
                 values.end());
    return values;
}

class Forms : public testing::Test {
  protected:
    void TearDown() override { EXPECT_EQ(messages.Take(), QStringList()); }
    MessageCatcher messages;
};

TEST_F(Forms, TheSameFormInThreeWays) {
    const std::unique_ptr<QWidget> code = BuiltInCode();
    const QStringList values = ValuesOf(*code);
    EXPECT_TRUE(values.contains("canvas.WinControl: control"));
    EXPECT_TRUE(values.contains("box.Attributes.Material.Diffuse: #dc281e"));
    EXPECT_TRUE(values.contains("solids has 0: twin"));
    const QImage picture = pictureOf(*code);
    EXPECT_TRUE(LooksLikeBaseline(picture, QStringLiteral("form")));
    code->hide();

    const MadeByUic uic;
    EXPECT_TRUE(uic.ui.canvas->GetWinControl()) << "references are there when setupUi returns";
    EXPECT_EQ(uic.ui.twin->GetReference(), uic.ui.ball);
    EXPECT_EQ(pictureOf(*uic.form), picture);
    EXPECT_EQ(ValuesOf(*uic.form), values);
    uic.form->hide();

    const std::unique_ptr<QWidget> form = loaded(textOf("allcomponents.ui"));
    ASSERT_TRUE(form);
    EXPECT_EQ(ValuesOf(*form), values);
    EXPECT_EQ(pictureOf(*form), picture);
    EXPECT_EQ(ValuesOf(*form), values);
}

TEST_F(Forms, InWhateverOrderTheComponentsAre) {
    const QByteArray text = textOf("allcomponents.ui");
    const QStringList values = withoutOrder(ValuesOf(*loaded(text)));
    QImage picture;
    for (const unsigned seed : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
        const std::unique_ptr<QWidget> form = loaded(reordered(text, seed));
        EXPECT_EQ(withoutOrder(ValuesOf(*form)), values) << seed;
        if (seed > 2)
            continue;
        // Nothing in this scene lies in front of something else at the same depth, so the order does not show.
        const QImage other = pictureOf(*form);
        if (!picture.isNull()) {
            EXPECT_EQ(other, picture) << seed;
        }
        picture = other;
    }
}

TEST_F(Forms, LoadedComesOnceForEachAndThePictureOnce) {
    for (const bool byUic : {true, false}) {
        GlRecorder calls;
        std::unique_ptr<QWidget> form;
        std::unique_ptr<MadeByUic> uic;
        if (byUic)
            uic = std::make_unique<MadeByUic>();
        else
            form = loaded(textOf("allcomponents.ui"));
        QWidget& window = byUic ? *uic->form : *form;
        EXPECT_EQ(calls.Count("glClear"), 0);
        EXPECT_EQ(calls.Count("glNewList"), 0);
        pictureOf(window);
        // The first repaint in a new size draws twice, by design; a scene is compiled once, what it keeps too.
        EXPECT_EQ(calls.Count("glClear"), 2) << byUic;
        for (const QObject* object : window.findChildren<QObject*>())
            if (const ComponentBase* component = ComponentBase::Of(object)) {
                EXPECT_FALSE(component->IsLoadingOrStoring()) << object->objectName().toStdString();
            }
    }
}

// What is loaded into a window that is already there and shown repaints it once.
TEST_F(Forms, AFormThatJoinsAShownCanvasRepaintsItOnce) {
    GlForm window;
    window.canvas->SetUnitsPerCm(40);
    window.TakeSwaps();
    QByteArray text = R"(<ui version="4.0"><widget class="QWidget" name="part">)";
    for (int i = 0; i < 50; ++i)
        text += R"(<widget class="zk::TZKOglBox" name="b)" + QByteArray::number(i) +
                R"("><property name="Scene"><cstring>late</cstring></property><property name="TransformBy"><cstring>)" +
                QByteArray::number(i % 7 - 3) + R"(/0/0</cstring></property></widget>)";
    text += R"(<widget class="zk::TZKOglScene" name="late"><property name="ZkOglCanvas"><cstring>canvas</cstring>
               </property></widget></widget></ui>)";
    const std::unique_ptr<QWidget> part = loaded(text, window.window.get());
    EXPECT_EQ(window.TakeSwaps(), 2);
    auto* scene = part->findChild<TZKOglScene*>("late");
    EXPECT_EQ(scene->GetZkOglCanvas(), window.canvas);
    EXPECT_EQ(scene->GetShapeCount(), 50);
    EXPECT_TRUE(scene->IsCompiled());
    EXPECT_NE(window.PixelAt({152, 148}), QColor(Qt::black));
}

TEST_F(Forms, AThousandShapesAreOneRepaint) {
    QByteArray text = R"(<ui version="4.0"><widget class="QWidget" name="Form">
        <property name="geometry"><rect><x>0</x><y>0</y><width>320</width><height>320</height></rect></property>)";
    for (int i = 0; i < 1000; ++i)
        text +=
            R"(<widget class="zk::TZKOglBox" name="b)" + QByteArray::number(i) +
            R"("><property name="Scene"><cstring>scene</cstring></property><property name="TransformBy"><cstring>)" +
            QByteArray::number(i % 10 - 5) + '/' + QByteArray::number(i / 10 % 10 - 5) + '/' +
            QByteArray::number(i / 100) +
            R"(</cstring></property><property name="Length"><double>0.5</double></property>
                <property name="Attributes.Material.Emission"><color><red>200</red><green>10</green><blue>)" +
            QByteArray::number(i % 256) + R"(</blue></color></property></widget>)";
    text += R"(<widget class="zk::TZKOglScene" name="scene">
        <property name="ZkOglCanvas"><cstring>canvas</cstring></property></widget>
        <widget class="zk::TZkOglCanvas" name="canvas"><property name="WinControl"><cstring>control</cstring>
        </property></widget><widget class="zk::TZKOglControl" name="control"><property name="geometry">
        <rect><x>10</x><y>10</y><width>300</width><height>300</height></rect></property></widget></widget></ui>)";
    GlRecorder calls;
    const std::unique_ptr<QWidget> form = loaded(text);
    auto* scene = form->findChild<TZKOglScene*>();
    int compilations = 0;
    QObject::connect(scene->GetZkOglCanvas(), &TZkOglCanvas::OnAfterCompile, [&] { ++compilations; });
    pictureOf(*form);
    EXPECT_EQ(scene->GetShapeCount(), 1000);
    EXPECT_EQ(compilations, 1);
    EXPECT_EQ(calls.Count("glClear"), 2) << "the first repaint in a new size draws twice";
}

TEST_F(Forms, LightsDecideHowFinelyFacesAreDividedWhateverComesFirst) {
    const QByteArray light = R"(<widget class="zk::TZKOglLight" name="lamp"><property name="ZkOglCanvas"><cstring>canvas
        </cstring></property><property name="Enabled"><bool>true</bool></property></widget>)";
    const QByteArray control = R"(<widget class="zk::TZKOglControl" name="control"/>)";
    const QByteArray canvas =
        R"(<widget class="zk::TZkOglCanvas" name="canvas"><property name="WinControl"><cstring>control
        </cstring></property><property name="DefaultTriangleResolution"><double>0.5</double></property></widget>)";
    for (const QByteArray& parts : {light + control + canvas, canvas + control + light, control + light + canvas}) {
        QByteArray text = R"(<ui version="4.0"><widget class="QWidget" name="Form">)" + parts + "</widget></ui>";
        text.replace("\n        </cstring>", "</cstring>");
        const std::unique_ptr<QWidget> form = loaded(text);
        auto* made = form->findChild<TZkOglCanvas*>();
        ASSERT_TRUE(made->HasContext());
        EXPECT_EQ(made->GetDefaultTriangleResolution(), 0.5);
        EXPECT_EQ(made->GetTriangleResolution(), 0) << "a light that is no spot needs no fine faces";
    }
}

TEST_F(Forms, FaultsInAFormThatUicMade) {
    {
        QWidget window;
        Ui::Faulty ui;
        ui.setupUi(&window);
        pictureOf(window);
        EXPECT_EQ(ui.box->GetA(), 2);
        EXPECT_EQ(ui.box->GetTranslation(), (TXYZ{0, 0, 0}));
        EXPECT_EQ(ui.box->GetDisplayList(), nullptr);
        EXPECT_EQ(ui.mirror->GetReference(), nullptr);
        EXPECT_EQ(ui.scene->GetZkOglCanvas(), ui.canvas);
    }
    const QStringList told = messages.Take();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(
        told[0].split('\n'),
        (QStringList{"box.TransformBy = \"1/x/3\": '1/x/3' is not a point: 'x' is not a valid floating point value",
                     "box.RotationPoint = \"\": '' is not a point: '' is not a valid floating point value",
                     "box.Hue = \"7\": there is no such property",
                     "box.Attributes.Material.Gloss = \"0.5\": there is no such property",
                     "way.Points = \"1/1\": '1/1' is not a point: '' is not a valid floating point value",
                     "mirror.ReferenceShape = \"mirror\":  Zyklischer Verweis ",
                     "box.Scene = \"nothing\": there is no component of that name",
                     "ball.Scene = \"canvas\": this is a zk::TZkOglCanvas, not a zk::TDisplayList"}));
}

TEST_F(Forms, ALanguageChangeResetsNothingThatTheUserChanged) {
    const MadeByUic uic;
    GlForm::Settle();
    uic.ui.box->Set_translation("1/2/3");
    uic.ui.tri->SetData({"0/0/0"});
    uic.ui.path->SetCenter("4/4/4");
    uic.ui.nav->SetCaption("other");
    uic.ui.box->SetDisplayList(uic.ui.flats);
    uic.ui.box->getAttributes()->getTexture()->SetRepeat(false);
    uic.ui.lamp->SetLightPosition("1/1/1");
    uic.form->setWindowTitle("mine");
    const QStringList values = ValuesOf(*uic.form);
    Ui::AllComponents ui = uic.ui;
    ui.retranslateUi(uic.form.get());
    GlForm::Settle();
    EXPECT_EQ(uic.form->windowTitle(), "All components");
    EXPECT_EQ(ValuesOf(*uic.form), values);
}

TEST_F(Forms, SeveralFormsOfTheSameNamesInOneWindow) {
    QWidget window;
    window.resize(400, 400);
    QWidget left(&window);
    QWidget right(&window);
    Ui::AllComponents a;
    Ui::AllComponents b;
    a.setupUi(&left);
    b.setupUi(&right);
    EXPECT_EQ(a.canvas->GetWinControl(), a.control);
    EXPECT_EQ(b.canvas->GetWinControl(), b.control);
    EXPECT_EQ(b.box->GetDisplayList(), b.solids);
    EXPECT_EQ(a.box->GetDisplayList(), a.solids);
    GlForm::Settle();
    EXPECT_EQ(b.canvas->Scenes(), (std::vector<TZKOglScene*>{b.again, b.solids, b.flats}));
}

TEST_F(Forms, FormsThatAreDeletedHalfWay) {
    {
        const MadeByUic uic;
        delete uic.ui.canvas;
        delete uic.ui.solids;
        delete uic.ui.control;
        pictureOf(*loaded(textOf("allcomponents.ui")));
    }
    GlForm::Settle();
    { const MadeByUic uic; }
    GlForm::Settle();
    auto* form = loaded(textOf("allcomponents.ui")).release();
    form->show();
    form->deleteLater();
    GlForm::Settle();
}

}  // namespace
}  // namespace zk::test
