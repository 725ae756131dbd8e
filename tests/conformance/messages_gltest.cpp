// Every text that the library says or raises, to the letter.
#include "glform.h"
#include "tables.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkxyarrays.h>
#include <zk/_zkxyz.h>
#include <zk/forms/formclasses.h>
#include <zk/host/workarounds.h>

#include <QMenu>

#include <deque>
#include <dlfcn.h>

using namespace zk;
using namespace zk::test;

namespace {

/// What OpenGL's next errors are to be, whatever they are.
std::deque<GLenum>& pretended() {
    static std::deque<GLenum> errors;
    return errors;
}

template <class Call>
std::string raised(Call call) {
    try {
        call();
    } catch (const EError& error) {
        return error.what();
    }
    return "nothing was raised";
}

/// A test that looks at texts; each of them counts.
class Texts : public testing::Test {
  protected:
    void Expect(const QStringList& texts) {
        EXPECT_EQ(messages.Take(), texts);
        Count("messages", "shown");
    }
    void ExpectRaised(const std::string& raisedText, const std::string& text) {
        EXPECT_EQ(raisedText, text);
        Count("messages", "raised");
    }
    MessageCatcher messages;
};

}  // namespace

extern "C" GLenum glGetError() {
    if (!pretended().empty()) {
        const GLenum error = pretended().front();
        pretended().pop_front();
        return error;
    }
    static const auto real = reinterpret_cast<GLenum (*)()>(dlsym(RTLD_NEXT, "glGetError"));
    return real();
}

// --- geometry --------------------------------------------------------------------------------------------------------

TEST_F(Texts, ABlockThatIsTooLargeAtFirst) {
    TXYZARRAY array;
    ArrayInit(array, 24, 417);
    Expect({"bescheidenheit ist eine tugend"});
    EXPECT_EQ(array.Data, nullptr);
    ArrayInit(array, 24, 416);
    EXPECT_EQ(messages.Take(), QStringList());
    ArrayClear(array);
}

TEST_F(Texts, ALargeBlockThatIsCleared) {
    TintegerARRAY array;
    ArrayInit(array, 4, 5);
    Arraysetcount(array, 2501);
    ArrayClear(array);
    Expect({"bescheidenheit ist eine tugend (freigeben)"});
}

TEST_F(Texts, ABlockThatIsNone) {
    int mine[3] = {1, 2, 3};
    TintegerARRAY array;
    array.ItemSize = 4;
    array.Delta = array.Capacity = array.Count = 3;
    array.Data = mine;
    const BeepHandler before = SetBeepHandler([] {});
    ArrayClear(array);
    SetBeepHandler(before);
    Expect({"exception bei FreeMem von ArrayClear"});
}

TEST_F(Texts, APolygonWithoutPlane) {
    ArrayOwner<TXYZARRAY> polygon(3);
    Arraysetcount(*polygon, 3);
    ExpectRaised(raised([&] { NewPlane(*polygon); }), "Normalvektor 0");
    ExpectRaised(raised([&] { NewBAse(*polygon); }), "Normalvektor 0");
}

// --- pictures --------------------------------------------------------------------------------------------------------

TEST_F(Texts, PicturesThatCannotBeLoaded) {
    std::uint8_t failed = 0;
    EXPECT_EQ(ZkAddtexture("nothing.gif", failed), -1);
    Expect({"unknown filetype: nothing.gif"});
    for (const char* ending : {"bmp", "BMP", "jpg", "jpeg", "ico", "wmf", "emf"}) {
        const QString name = QStringLiteral("/nowhere/nothing.") + QLatin1String(ending);
        EXPECT_EQ(ZkAddtexture(name, failed), -1);
        Expect({"can't load texture: " + name});
    }
}

// --- OpenGL ----------------------------------------------------------------------------------------------------------

TEST(GlTexts, Errors) {
    GlForm form;
    const std::pair<GLenum, const char*> texts[] = {
        {1280, "Error: GL_INVALID_ENUM"},   {1281, "Error: GL_INVALID_VALUE"},   {1282, "Error: GL_INVALID_OPERATION"},
        {1283, "Error: GL_STACK_OVERFLOW"}, {1284, "Error: GL_STACK_UNDERFLOW"}, {1285, "Error: GL_OUT_OF_MEMORY"},
    };
    ASSERT_TRUE(form.canvas->CheckCurrent());
    for (const auto& [error, text] : texts) {
        pretended() = {error};
        OGLError();
        EXPECT_EQ(form.messages.Take(), QStringList{text});
        Count("messages", "shown");
    }
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList());
    // The number is that of a second question, by choice.
    pretended() = {4711, 0};
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Unbekannter Fehler 0"});
    pretended() = {4711, 1280};
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Unbekannter Fehler 1280"});
    Count("messages", "shown");
}

TEST(GlTexts, NoList) {
    GlForm form;
    TZKOglScene scene;
    scene.setObjectName("Wald");
    ASSERT_TRUE(form.canvas->CheckCurrent());
    glBegin(GL_POINTS);  // in here OpenGL makes no lists
    scene.SetZkOglCanvas(form.canvas);
    glEnd();
    while (glGetError() != GL_NO_ERROR) {
    }
    EXPECT_EQ(form.messages.Take(), QStringList{"displaylist Wald konnte nicht erstell werden "});
    Count("messages", "shown");
}

TEST(GlTexts, NoPixelFormat) {
    GlForm form;
    form.canvas->SetWinControl(nullptr);
    auto* control = new TZKOglControl(form.window.get());
    SetOn(Workaround::SurfaceType, false);
    form.canvas->SetWinControl(control);
    SetOn(Workaround::SurfaceType, true);
    EXPECT_EQ(form.messages.Take(), QStringList{"error SetPixelFormat"});
    Count("messages", "shown");
}

TEST(GlTexts, ALightThatIsNotLetGo) {
    class Refusing : public TZkOglCanvas {
      public:
        using TZkOglCanvas::TZkOglCanvas;
        void RemoveLight(Tlight* light) override {
            if (refuses)
                throw EError("no");
            TZkOglCanvas::RemoveLight(light);
        }
        bool refuses = false;
    };
    GlForm form;
    auto* canvas = new Refusing(form.window.get());
    canvas->SetWinControl(form.control);
    TZKOglLight first;
    TZKOglLight second;
    first.SetZkOglCanvas(canvas);
    second.SetZkOglCanvas(canvas);
    canvas->refuses = true;
    second.SetZkOglCanvas(nullptr);
    canvas->refuses = false;
    EXPECT_EQ(form.messages.Take(), QStringList{"error destroying light :1"});
    Count("messages", "shown");
}

// --- references ------------------------------------------------------------------------------------------------------

TEST_F(Texts, Circles) {
    TZKOglRefScene scene;
    TZKOglRefScene otherScene;
    otherScene.SetReference(&scene);
    ExpectRaised(raised([&] { scene.SetReference(&scene); }), " Zyklischer Verweis ");
    EXPECT_EQ(raised([&] { scene.SetReference(&otherScene); }), " Zyklischer Verweis ");
    TZKOglRefShape shape;
    TZKOglRefShape otherShape;
    otherShape.SetReference(&shape);
    ExpectRaised(raised([&] { shape.SetReference(&shape); }), " Zyklischer Verweis ");
    EXPECT_EQ(raised([&] { shape.SetReference(&otherShape); }), " Zyklischer Verweis ");
}

// --- captions --------------------------------------------------------------------------------------------------------

TEST_F(Texts, TheNavigatorsMenu) {
    TZKOglNav navigator;
    QStringList entries;
    for (const QAction* action : navigator.findChild<QMenu*>()->actions())
        entries << action->text();
    EXPECT_EQ(entries, (QStringList{"Grundriss", "Aufriss", "Schraeriss"}));
    navigator.SetName("name");
    EXPECT_EQ(navigator.GetCaption(), " ");
    for (int i = 0; i < 4; ++i)
        Count("messages", "captions");
}

TEST_F(Texts, ThePage) {
    EXPECT_STREQ(FormPage, "ZKOgl");
    Count("messages", "captions");
}
