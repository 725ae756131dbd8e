#include "glform.h"
#include "mainwindow.h"

#include <zk/_zkogltools.h>
#include <zk/forms.h>
#include <zk/host/propertypath.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;
using gallery::PropertiesOf;
using gallery::SetterCall;
using gallery::VariableName;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

QStringList pathsOf(const QObject& component) {
    QStringList paths;
    for (const gallery::PropertyRow& row : PropertiesOf(component))
        paths += row.Path;
    return paths;
}

/// The gallery, and its panel of properties.
class Properties : public testing::Test {
  protected:
    Properties() {
        window->setGeometry(20, 20, 1100, 720);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        GlForm::Settle();
    }
    ~Properties() override { EXPECT_EQ(messages.Take(), QStringList()); }

    gallery::PropertyPanel* panel() { return window->Properties(); }
    TZKOglBox* box(const char* name) {
        return window->Shapes()->At(int(window->Shapes()->Names().indexOf(QString::fromLatin1(name))));
    }
    void click(QWidget* control, const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
        const QPoint place = control->mapTo(window.get(), control->contentsRect().topLeft() + at);
        QTest::mouseClick(window->windowHandle(), button, Qt::NoModifier, place);
        GlForm::Settle();
    }
    void clickBox(const char* name, Qt::MouseButton button = Qt::LeftButton) {
        const int index = int(window->Shapes()->Names().indexOf(QString::fromLatin1(name)));
        click(window->Control(), window->PixelOf(window->Shapes()->MiddleOf(index)), button);
    }
    template <class Editor>
    Editor* editor(const char* path) {
        auto* found = qobject_cast<Editor*>(panel()->EditorOf(QString::fromLatin1(path)));
        if (!found)
            throw std::runtime_error(path);
        return found;
    }
    void type(QWidget* into, const char* text) {
        into->setFocus();
        QTest::keyClick(into, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(into, QString::fromLatin1(text));
        QTest::keyClick(into, Qt::Key_Return);
        GlForm::Settle();
    }
    QImage picture() {
        GlForm::Settle();
        const QWidget* control = window->Control();
        const QRect area = control->contentsRect().translated(control->mapToGlobal(QPoint(0, 0)));
        return window->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    }

    MessageCatcher messages;
    std::unique_ptr<gallery::MainWindow> window = std::make_unique<gallery::MainWindow>();
};

}  // namespace

TEST(PropertyRows, ComeAsFormDesignersShowThem) {
    const TZKOglBox box;
    EXPECT_EQ(pathsOf(box), QStringList({"objectName",
                                         "Scene",
                                         "TransformBy",
                                         "RotateBy",
                                         "RotationPoint",
                                         "RotationLine",
                                         "Scale",
                                         "Visible",
                                         "ParentAttributes",
                                         "Nohit",
                                         "Length",
                                         "Width",
                                         "Height",
                                         "Attributes.PolyStyle.Mode",
                                         "Attributes.Material.Ambient",
                                         "Attributes.Material.Diffuse",
                                         "Attributes.Material.Specular",
                                         "Attributes.Material.Emission",
                                         "Attributes.Material.Shininess",
                                         "Attributes.Material.Translucent",
                                         "Attributes.Material.DefKind",
                                         "Attributes.Texture.Picture",
                                         "Attributes.Texture.Repeating",
                                         "Attributes.Texture.Filter",
                                         "Attributes.Texture.EnvMode",
                                         "Attributes.Texture.Visible",
                                         "Attributes.Texture.BaseFix",
                                         "Attributes.Texture.WorldWidth",
                                         "Attributes.Texture.WorldHeight"}));
    const std::vector<gallery::PropertyRow> rows = PropertiesOf(box);
    EXPECT_EQ(rows[1].Group, "TCustomShape");
    EXPECT_EQ(rows[10].Group, "TZKOglBox");
    EXPECT_EQ(rows[14].Group, QString::fromUtf8("Attributes → Material"));
}

TEST(PropertyRows, VariablesHaveNamesThatCodeCanHave) {
    QObject object;
    const auto nameFor = [&object](const char* name) {
        object.setObjectName(QString::fromUtf8(name));
        return VariableName(object);
    };
    EXPECT_EQ(nameFor("Cube"), "cube");
    EXPECT_EQ(nameFor("West post"), "westPost");
    EXPECT_EQ(nameFor("box12"), "box12");
    EXPECT_EQ(nameFor("2nd \"box\""), "shape2ndBox");
    EXPECT_EQ(nameFor("Größe"), "grE");
    EXPECT_EQ(nameFor(""), "qObject");
}

// Each line is compiled and run, and it is what is written for the value that it has set.
TEST(SetterCalls, AreTheCodeThatSetsTheValue) {
    TZKOglScene scene;
    scene.setObjectName("scene");
    TZKOglBox theBox;
    theBox.setObjectName("box");
    TZKOglBox* const box = &theBox;
#define SAME(path, line) \
    line;                \
    EXPECT_EQ(SetterCall(*box, path).toStdString(), #line ";") << path
    SAME("Length", box->SetA(2.5));
    SAME("Width", box->SetB(-1e-07));
    SAME("Height", box->SetC(1000000));
    SAME("TransformBy", box->Set_translation("1/2.5/-3"));
    SAME("RotateBy", box->Setdrehwinkel(30));
    SAME("RotationPoint", box->SetDrehgeradePkt("0/1/0"));
    SAME("RotationLine", box->SetDrehgeradeRichtung("1/1/0"));
    SAME("Scale", box->SetScale(0.5));
    SAME("Visible", box->SetVisible(false));
    SAME("ParentAttributes", box->SetParentAttributes(true));
    SAME("Nohit", box->SetNohit(true));
    SAME("Attributes.PolyStyle.Mode", box->getAttributes()->getPolyStyle()->SetMode(zk::glline));
    SAME("Attributes.Material.Ambient", box->getAttributes()->getMaterial()->setAmbientColor("#102030"));
    SAME("Attributes.Material.Diffuse", box->getAttributes()->getMaterial()->setDiffuseColor("#ff8000"));
    SAME("Attributes.Material.Specular", box->getAttributes()->getMaterial()->setSpecularColor("#000000"));
    SAME("Attributes.Material.Emission", box->getAttributes()->getMaterial()->setEmissionColor("#00ff00"));
    SAME("Attributes.Material.Shininess", box->getAttributes()->getMaterial()->SetShininess(12.5));
    SAME("Attributes.Material.Translucent", box->getAttributes()->getMaterial()->SetTranslucent(0.25));
    SAME("Attributes.Material.DefKind", box->getAttributes()->getMaterial()->SetMatKind(zk::NoDefMat));
    SAME("Attributes.Texture.Picture", box->getAttributes()->getTexture()->SetPicture(""));
    SAME("Attributes.Texture.Repeating", box->getAttributes()->getTexture()->SetRepeat(true));
    SAME("Attributes.Texture.Filter", box->getAttributes()->getTexture()->SetFilter(zk::gllinear));
    SAME("Attributes.Texture.EnvMode", box->getAttributes()->getTexture()->SetEnvmode(zk::gldecal));
    SAME("Attributes.Texture.Visible", box->getAttributes()->getTexture()->SetVisible(false));
    SAME("Attributes.Texture.BaseFix", box->getAttributes()->getTexture()->SetbaseFix(true));
    SAME("Attributes.Texture.WorldWidth", box->getAttributes()->getTexture()->SetWorldWidth(2));
    SAME("Attributes.Texture.WorldHeight", box->getAttributes()->getTexture()->SetWorldheight(3));
    SAME("Scene", box->SetDisplayList(nullptr));
    SAME("objectName", box->setObjectName("box"));
#undef SAME
    theBox.SetDisplayList(&scene);
    EXPECT_EQ(SetterCall(theBox, "Scene"), "box->SetDisplayList(scene);");
    EXPECT_EQ(SetterCall(theBox, "Nonsense"), "");
    theBox.setObjectName("a \"b\" \\ c");
    EXPECT_EQ(SetterCall(theBox, "objectName"), "aBC->setObjectName(\"a \\\"b\\\" \\\\ c\");");
}

TEST(SetterCalls, OfTheOtherShapes) {
    TZKOglSphere theSphere;
    theSphere.setObjectName("sphere");
    TZKOglCylinder theCylinder;
    theCylinder.setObjectName("cylinder");
    TZKOglPlane thePlane;
    thePlane.setObjectName("plane");
    TZKOglRefShape theCopy;
    theCopy.setObjectName("copy");
    TZKOglSphere* const sphere = &theSphere;
    TZKOglCylinder* const cylinder = &theCylinder;
    TZKOglPlane* const plane = &thePlane;
    TZKOglRefShape* const copy = &theCopy;
#define SAME(shape, path, line) \
    line;                       \
    EXPECT_EQ(SetterCall(*shape, path).toStdString(), #line ";") << path
    SAME(sphere, "R", sphere->SetR(1.5));
    SAME(sphere, "Resolution", sphere->SetResolution(40));
    SAME(cylinder, "BaseRadius", cylinder->SetBaseRadius(1));
    SAME(cylinder, "TopRadius", cylinder->SetTopRadius(0.5));
    SAME(cylinder, "CylinderHeight", cylinder->SetCylinderHeight(4));
    SAME(cylinder, "Stacks", cylinder->SetStacks(3));
    SAME(cylinder, "Resolution", cylinder->SetResolution(12));
    SAME(copy, "ReferenceShape", copy->SetReference(sphere));
#undef SAME
    plane->SetData({"0/0/0", "1/0/0", "0/1/0"});
    EXPECT_EQ(SetterCall(*plane, "Data"), "plane->SetData({\"0/0/0\", \"1/0/0\", \"0/1/0\"});");
}

TEST(SetterCalls, OfCanvasLightAndScenes) {
    TZkOglCanvas theCanvas;
    theCanvas.setObjectName("canvas");
    TZKOglLight theLight;
    theLight.setObjectName("light");
    TZKOglScene theScene;
    theScene.setObjectName("scene");
    TZKOglRefScene theCopy;
    theCopy.setObjectName("copy");
    TZkOglCanvas* const canvas = &theCanvas;
    TZKOglLight* const light = &theLight;
    TZKOglScene* const scene = &theScene;
    TZKOglRefScene* const copy = &theCopy;
#define SAME(component, path, line) \
    line;                           \
    EXPECT_EQ(SetterCall(*component, path).toStdString(), #line ";") << path
    SAME(canvas, "WinControl", canvas->SetWinControl(nullptr));
    SAME(canvas, "UnitsPerCM", canvas->SetUnitsPerCm(40));
    SAME(canvas, "DefaultTriangleResolution", canvas->SetDefaultTriangleResolution(0.5));
    SAME(canvas, "AutoCompile", canvas->SetAutoCompile(false));
    SAME(canvas, "LightModelTwoSided", canvas->SetLightModelTwoSided(true));
    SAME(canvas, "BackgroundColor", canvas->SetBackgroundQColor("#102030"));
    SAME(canvas, "DefaultUnitsPerCM", canvas->SetDefaultUnitsPerCM(20));
    SAME(canvas, "ZoomFactor", canvas->SetZoomFactor(2));
    SAME(canvas, "SelectEnabled", canvas->SetSelectEnabled(false));
    SAME(canvas, "PointOfView", canvas->SetBlickWinkel(20));
    SAME(canvas, "TransformBy", canvas->Set_translation("1/2/3"));
    SAME(canvas, "RotateBy", canvas->Setdrehwinkel(10));
    SAME(light, "ZkOglCanvas", light->SetZkOglCanvas(canvas));
    SAME(light, "Attenuation", light->setattenuation(0.1));
    SAME(light, "Ambient", light->setAmbientColor("#101010"));
    SAME(light, "Diffuse", light->setDiffuseColor("#202020"));
    SAME(light, "Specular", light->setSpecularColor("#303030"));
    SAME(light, "Enabled", light->SetEnabled(true));
    SAME(light, "SpotCutOff", light->SetSpotCutOff(30));
    SAME(light, "SpotExponent", light->SetSpotExponent(2));
    SAME(light, "LightPosition", light->SetLightPosition("1/2/3"));
    SAME(light, "LightDirection", light->SetLightDirection("0/-1/0"));
    SAME(scene, "ZkOglCanvas", scene->SetZkOglCanvas(canvas));
    SAME(scene, "Visible", scene->SetVisible(false));
    SAME(scene, "TransformBy", scene->Set_translation("1/2/3"));
    SAME(copy, "ReferenceScene", copy->SetReference(scene));
#undef SAME
}

TEST_F(Properties, AClickShowsThoseOfTheShape) {
    EXPECT_EQ(panel()->Component(), nullptr);
    EXPECT_TRUE(panel()->visibleRegion().isEmpty()) << "the controls are in front";
    clickBox("Brick", Qt::RightButton);
    EXPECT_EQ(panel()->Component(), box("Brick"));
    EXPECT_FALSE(panel()->visibleRegion().isEmpty());
    EXPECT_EQ(editor<QDoubleSpinBox>("Length")->value(), box("Brick")->GetA());
    EXPECT_EQ(editor<QLineEdit>("objectName")->text(), "Brick");
    EXPECT_EQ(editor<QComboBox>("Scene")->currentText(), "scene");
    EXPECT_EQ(window->findChild<QComboBox*>("component")->currentText(), "Brick");
    EXPECT_EQ(panel()->Code(), "") << "a click is no edit";
    click(window->Control(), {5, 5});
    EXPECT_EQ(panel()->Component(), nullptr);
}

TEST_F(Properties, AClickByKeyShowsThemToo) {
    zk::TZKOglControl* control = window->Control();
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Right);
    QTest::keyClick(control, Qt::Key_Right);
    auto* current = dynamic_cast<QObject*>(control->CurrentShape());
    ASSERT_TRUE(current);
    QTest::keyClick(control, Qt::Key_Space);
    EXPECT_EQ(panel()->Component(), current);
    EXPECT_EQ(editor<QLineEdit>("objectName")->text(), current->objectName());
}

TEST_F(Properties, FollowWhatTheProgramDoes) {
    clickBox("Brick");
    EXPECT_TRUE(window->Shapes()->IsLifted(int(window->Shapes()->Names().indexOf("Brick"))));
    EXPECT_EQ(editor<QLineEdit>("TransformBy")->text(), box("Brick")->Get_translation()) << "where it is lifted to";
    box("Brick")->SetA(3.5);
    GlForm::Settle();
    EXPECT_EQ(editor<QDoubleSpinBox>("Length")->value(), 3.5);
}

TEST_F(Properties, AnEditChangesThePictureAndIsThereAsCode) {
    clickBox("Brick", Qt::RightButton);
    const QImage before = picture();
    type(editor<QDoubleSpinBox>("Height"), "2.25");
    EXPECT_EQ(box("Brick")->GetC(), 2.25);
    EXPECT_NE(picture(), before);
    EXPECT_EQ(panel()->Code(), "brick->SetC(2.25);\n");
    type(editor<QLineEdit>("RotationLine"), "0/1/0.5");
    QTest::mouseClick(editor<QCheckBox>("Nohit"), Qt::LeftButton, Qt::NoModifier, {6, 8});
    EXPECT_TRUE(box("Brick")->GetNohit());
    const QString code = "brick->SetC(2.25);\nbrick->SetDrehgeradeRichtung(\"0/1/0.5\");\nbrick->SetNohit(true);\n";
    EXPECT_EQ(panel()->Code(), code);
    auto* shown = window->findChild<QPlainTextEdit*>("code");
    EXPECT_EQ(shown->toPlainText(), code);
    QTest::mouseClick(window->findChild<QPushButton*>("copyCode"), Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), code);

    // What is as it was is no change.
    QTest::mouseClick(editor<QCheckBox>("Nohit"), Qt::LeftButton, Qt::NoModifier, {6, 8});
    EXPECT_EQ(panel()->Code(), "brick->SetC(2.25);\nbrick->SetDrehgeradeRichtung(\"0/1/0.5\");\n");
    panel()->TakeBack();
    EXPECT_EQ(panel()->Code(), "");
    EXPECT_EQ(picture(), before);
    EXPECT_FALSE(window->findChild<QPushButton*>("copyCode")->isEnabled());
}

TEST_F(Properties, ChangesOfSeveralShapesAreKeptAndResetTakesThemBack) {
    const QImage before = picture();
    clickBox("Brick", Qt::RightButton);
    type(editor<QDoubleSpinBox>("Length"), "1.5");
    clickBox("Tower", Qt::RightButton);
    type(editor<QDoubleSpinBox>("Scale"), "0.5");
    EXPECT_EQ(panel()->Code(), "brick->SetA(1.5);\ntower->SetScale(0.5);\n");
    window->Reset();
    EXPECT_EQ(panel()->Code(), "");
    EXPECT_EQ(picture(), before);
}

TEST_F(Properties, ChoicesColoursAndReferences) {
    clickBox("Brick", Qt::RightButton);
    auto* mode = editor<QComboBox>("Attributes.PolyStyle.Mode");
    EXPECT_EQ(mode->currentText(), "glfill");
    mode->setFocus();
    QTest::keyClick(mode, Qt::Key_Up);
    EXPECT_EQ(box("Brick")->getAttributes()->getPolyStyle()->GetMode(), glline);

    auto* color = editor<QPushButton>("Attributes.Material.Diffuse");
    QTest::mouseClick(color, Qt::LeftButton);
    auto* dialog = window->findChild<QColorDialog*>();
    ASSERT_TRUE(dialog);
    dialog->setCurrentColor(QColor("#123456"));
    EXPECT_EQ(box("Brick")->getAttributes()->getMaterial()->diffuseColor(), QColor("#123456"));
    EXPECT_EQ(color->text(), "#123456");
    dialog->reject();
    EXPECT_NE(box("Brick")->getAttributes()->getMaterial()->diffuseColor(), QColor("#123456"));
    EXPECT_EQ(panel()->Code(), "brick->getAttributes()->getPolyStyle()->SetMode(zk::glline);\n");

    auto* scene = editor<QComboBox>("Scene");
    scene->setFocus();
    QTest::keyClick(scene, Qt::Key_Home);
    EXPECT_EQ(box("Brick")->GetDisplayList(), nullptr);
    EXPECT_TRUE(panel()->Code().contains("brick->SetDisplayList(nullptr);"));
    scene->setCurrentText("scene");
    Q_EMIT scene->activated(scene->currentIndex());
    EXPECT_TRUE(box("Brick")->GetDisplayList());
}

// Writing the kind is a trigger, which changes the colours and reads as before.
TEST_F(Properties, APresetIsWhatItChanges) {
    clickBox("Brick", Qt::RightButton);
    auto* kind = editor<QComboBox>("Attributes.Material.DefKind");
    kind->setCurrentText("matAqua");
    Q_EMIT kind->activated(kind->currentIndex());
    EXPECT_EQ(kind->currentText(), "NoDefMat");
    EXPECT_TRUE(panel()->Code().contains("brick->getAttributes()->getMaterial()->setEmissionColor(\"#00ffff\");"));
    EXPECT_FALSE(panel()->Code().contains("SetMatKind"));
}

TEST_F(Properties, WhatIsNoValueIsSaidAndChangesNothing) {
    clickBox("Brick", Qt::RightButton);
    const QString before = box("Brick")->Get_translation();
    type(editor<QLineEdit>("TransformBy"), "1/x/3");
    EXPECT_EQ(box("Brick")->Get_translation(), before);
    EXPECT_TRUE(panel()->Fault().startsWith("TransformBy: ")) << panel()->Fault().toStdString();
    EXPECT_EQ(editor<QLineEdit>("TransformBy")->text(), before);
    EXPECT_EQ(panel()->Code(), "");
    type(editor<QLineEdit>("TransformBy"), "1/2/3");
    EXPECT_EQ(panel()->Fault(), "");
    EXPECT_EQ(panel()->Code(), "brick->Set_translation(\"1/2/3\");\n");
}

TEST_F(Properties, TheKeyboardReachesEveryEditor) {
    auto* chooser = window->findChild<QComboBox*>("component");
    window->findChild<QDockWidget*>("properties")->raise();
    chooser->setFocus();
    QTest::keyClick(chooser, Qt::Key_Down);
    EXPECT_EQ(panel()->Component(), window->Canvas()) << "the canvas is the first to be chosen";
    QSet<QString> reached;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        reached += window->focusWidget()->objectName();
    }
    for (const gallery::PropertyRow& row : PropertiesOf(*window->Canvas()))
        EXPECT_TRUE(reached.contains(row.Path)) << row.Path.toStdString();
    EXPECT_TRUE(reached.contains("code"));
}

TEST_F(Properties, AShapeThatGoesLeavesThePanelEmpty) {
    clickBox("Brick", Qt::RightButton);
    type(editor<QDoubleSpinBox>("Length"), "1.5");
    gallery::ThemePage* page = window->Themes().at(0);
    window->ShowTheme(page);
    GlForm::Settle();
    auto* shape = page->Canvas()->Scenes().front()->GetZkShape(2);
    panel()->SetComponent(shape);
    type(editor<QDoubleSpinBox>("R"), "0.5");
    EXPECT_EQ(panel()->Code().count('\n'), 2);
    delete shape;
    EXPECT_EQ(panel()->Component(), nullptr);
    EXPECT_EQ(panel()->Code().count('\n'), 1);
    GlForm::Settle();
    EXPECT_EQ(panel()->EditorOf("R"), nullptr);
}

TEST_F(Properties, ASpheresResolutionShowsAtOnce) {
    gallery::ThemePage* page = window->Themes().at(0);
    window->ShowTheme(page);
    GlForm::Settle();
    auto* ball = dynamic_cast<TZKOglSphere*>(page->Canvas()->Scenes().front()->GetZkShape(2));
    const TXYI at = page->Canvas()->WtoPixel(ball->GetTranslation());
    click(page->Control(), {at.x, at.y});
    ASSERT_EQ(panel()->Component(), ball);
    const QImage before = window->PagePicture();
    type(editor<QSpinBox>("Resolution"), "4");
    EXPECT_NE(window->PagePicture(), before);
}
