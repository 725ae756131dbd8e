// Pictures on shapes: what goes to OpenGL, how often, and what is seen of it.
#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"
#include "picturefiles.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkoglcanvas/textureobjects.h>
#include <zk/_zkogltools.h>
#include <zk/_zkxyarrays.h>

#include <QOpenGLContext>
#include <gtest/gtest.h>

#include <algorithm>

using namespace zk;
using namespace zk::test;

namespace {

const QStringList unitSquare{"0/0/0", "0/1/0", "1/1/0", "1/0/0"};

int distance(const QColor& one, const QColor& other) {
    return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                     std::abs(one.blue() - other.blue())});
}

testing::AssertionResult looksLike(const QColor& pixel, const QColor& expected) {
    if (distance(pixel, expected) <= 3)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << pixel.name().toStdString() << " is not " << expected.name().toStdString();
}

// A white plane of 4 × 4 cm in the middle of the window, which each texture is laid onto once.
class Texture : public testing::Test {
  protected:
    Texture() { ZkRemoveTextures(); }
    ~Texture() override { ZkRemoveTextures(); }

    TZKOglPlane* addPlane(GlForm& form, TZKOglScene* scene, const QString& picture) {
        auto* plane = new TZKOglPlane(form.window.get());
        plane->SetData(unitSquare);
        plane->SetScale(4);
        plane->Settranslation({-2, -2, 0});
        GlForm::MakeFlat(plane->getAttributes()->getMaterial(), 0xFFFFFF);
        if (!picture.isEmpty())
            plane->getAttributes()->getTexture()->SetPicture(picture);
        plane->getAttributes()->getTexture()->SetVisible(true);
        plane->SetDisplayList(scene);
        return plane;
    }

    // Four colors. The picture's upper left comes first, the one below it is stored next: it is seen to the right.
    QString four() {
        QImage picture(2, 2, QImage::Format_RGB32);
        picture.setPixelColor(0, 0, Qt::red);
        picture.setPixelColor(0, 1, Qt::green);
        picture.setPixelColor(1, 0, Qt::blue);
        picture.setPixelColor(1, 1, Qt::yellow);
        return files.Write("four.bmp", Bmp(picture));
    }
    static QColor at(GlForm& form, double s, double t) { return form.PixelAt({90 + 120 * s, 210 - 120 * t}); }

    Files files;
};

int uploads(const GlRecorder& recorder) {
    return recorder.Count("glTexImage2D");
}

/// A handler that does nothing: a shape that has one belongs to user code and is played each time.
void playAlways(TZkShape* shape) {
    QObject::connect(shape, &TZkShape::OnPlay, shape, [] {});
}

}  // namespace

TEST_F(Texture, APictureIsSeenOnTheShape) {
    for (const bool played : {false, true}) {
        GlForm form({300, 300});
        TZKOglPlane* plane = addPlane(form, form.AddScene(), four());
        if (played)
            playAlways(plane);
        form.canvas->Refresh();
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::red));
        EXPECT_TRUE(looksLike(at(form, 0.75, 0.25), Qt::green));
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.75), Qt::blue));
        EXPECT_TRUE(looksLike(at(form, 0.75, 0.75), Qt::yellow));
        EXPECT_TRUE(looksLike(at(form, -0.1, 0.5), black));
        plane->getAttributes()->getTexture()->SetVisible(false);
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::white));
    }
}

TEST_F(Texture, ItGoesToOpenGlOnceWhoeverShowsIt) {
    for (const bool played : {false, true}) {
        GlForm form({300, 300});
        TZKOglScene* scene = form.AddScene();
        const QString picture = four();
        GlRecorder recorder;
        std::vector<TZKOglPlane*> planes;
        {
            const ChangeBracket bracket(form.canvas);
            for (int i = 0; i < 100; ++i) {
                planes.push_back(addPlane(form, scene, picture));
                if (played && i % 2 == 0)
                    playAlways(planes.back());
            }
        }
        EXPECT_EQ(recorder.CallsTo({"glTexImage2D"}), Calls{"glTexImage2D(GL_TEXTURE_2D, 0, 3, 2, 2, 0, 6407, 5121)"});
        EXPECT_EQ(form.canvas->Textures()->Count(), 1U);
        recorder.Clear();
        form.canvas->Refresh();
        planes.front()->Setdrehwinkel(3);
        planes.back()->getAttributes()->getTexture()->SetFilter(gllinear);
        scene->getAttributes()->getTexture()->SetPicture(picture);
        scene->getAttributes()->getTexture()->SetVisible(true);
        form.canvas->getAttributes()->getTexture()->SetPicture("FOUR.BMP");
        form.canvas->getAttributes()->getTexture()->SetVisible(true);
        scene->DoUpdateNow();
        EXPECT_EQ(uploads(recorder), 0);
        EXPECT_EQ(form.canvas->Textures()->Count(), 1U);
    }
}

TEST_F(Texture, TexturesWithOnePictureDoNotDisturbEachOther) {
    GlForm form({300, 300});
    TZKOglScene* scene = form.AddScene();
    QImage picture(2, 1, QImage::Format_RGB32);  // is stored as one pixel and a black one behind it
    picture.fill(Qt::white);
    const QString name = files.Write("half.bmp", Bmp(picture));
    const QStringList wide{"0/0/0", "0/1/0", "2/1/0", "2/0/0"};
    std::vector<TZKOglPlane*> planes;
    for (int i = 0; i < 4; ++i) {
        TZKOglPlane* plane = addPlane(form, scene, name);
        plane->SetData(wide);
        plane->SetScale(1);
        plane->Settranslation({-1, double(i), 0});
        plane->getAttributes()->getTexture()->SetFilter(i % 2 != 0 ? gllinear : glnearest);
        plane->getAttributes()->getTexture()->SetRepeat(i < 2);
        if (i == 3)
            playAlways(plane);
        planes.push_back(plane);
    }
    form.canvas->Refresh();
    const auto pixel = [&form](double s, int row) { return form.PixelAt({120 + 30 * s, 150 - 30 * (row + 0.5)}); };
    for (int row = 0; row < 4; ++row) {
        EXPECT_LT(distance(pixel(0.25, row), Qt::white), 30) << row;
        EXPECT_LT(distance(pixel(0.75, row), black), 30) << row;
        EXPECT_LT(distance(pixel(1.25, row), row < 2 ? QColor(Qt::white) : black), 30) << "repeated or not " << row;
        const bool isBetween = distance(pixel(0.45, row), black) > 30 && distance(pixel(0.45, row), Qt::white) > 30;
        EXPECT_EQ(isBetween, row % 2 != 0) << "filter " << row;
    }
}

TEST_F(Texture, TheEnvironmentMixesPictureAndMaterial) {
    GlForm form({300, 300});
    TZKOglPlane* plane = addPlane(form, form.AddScene(), four());
    GlForm::MakeFlat(plane->getAttributes()->getMaterial(), 0x00FF00);  // green
    TTexture* texture = plane->getAttributes()->getTexture();
    texture->SetEnvmode(glmodulate);
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), black)) << "red times green";
    EXPECT_TRUE(looksLike(at(form, 0.75, 0.75), Qt::green)) << "yellow times green";
    texture->SetEnvmode(gldecal);
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::red)) << "the picture alone";
    texture->SetEnvmode(glblend);
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::green)) << "the material where the picture is dark in that color";
    EXPECT_TRUE(looksLike(at(form, 0.75, 0.75), black)) << "and the environment's black where it is bright";
}

TEST_F(Texture, TheBaseLaysIt) {
    GlForm form({300, 300});
    TZKOglPlane* plane = addPlane(form, form.AddScene(), four());
    TBAse base = Unitbase;
    base.Origin = {0.5, 0, 0};
    plane->getAttributes()->getTexture()->Setbase(base);
    EXPECT_TRUE(looksLike(at(form, 0.75, 0.25), Qt::red)) << "moved by half a picture";
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::green));
    base = {{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    plane->getAttributes()->getTexture()->Setbase(base);
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::blue)) << "turned by a quarter";
    EXPECT_TRUE(looksLike(at(form, 0.75, 0.25), Qt::red));
    EXPECT_TRUE(looksLike(at(form, 0.75, 0.75), Qt::green));
    plane->getAttributes()->getTexture()->SetWorldWidth(7);
    plane->getAttributes()->getTexture()->SetWorldheight(7);
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::blue)) << "the world size changes nothing";
}

TEST_F(Texture, SolidsHaveTextureCoordinatesOfTheirOwn) {
    GlForm form({300, 300});
    auto* sphere = new TZKOglSphere(form.window.get());
    sphere->SetR(3);
    GlForm::MakeFlat(sphere->getAttributes()->getMaterial(), 0xFFFFFF);
    sphere->getAttributes()->getTexture()->SetPicture(four());
    sphere->getAttributes()->getTexture()->SetVisible(true);
    sphere->SetDisplayList(form.AddScene());
    // Seen along its axis, s runs round it and t is above a half: blue and yellow, as GLU lays them.
    const QImage screen = form.Screen();
    int blue = 0;
    int yellow = 0;
    int other = 0;
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 300; ++x) {
            const QColor pixel = screen.pixelColor(x, y);
            if (distance(pixel, black) <= 3)
                continue;
            (distance(pixel, Qt::blue) <= 3 ? blue : distance(pixel, Qt::yellow) <= 3 ? yellow : other) += 1;
        }
    }
    EXPECT_GT(blue, 8000);
    EXPECT_GT(yellow, 8000);
    EXPECT_LT(other, 300);
}

// --- contexts -------------------------------------------------------------------------------------------------------

TEST_F(Texture, ANewContextGetsItAnew) {
    GlForm form({300, 300});
    addPlane(form, form.AddScene(), four());
    form.canvas->Refresh();
    for (int i = 0; i < 3; ++i) {
        GlRecorder recorder;
        form.canvas->SetWinControl(nullptr);
        EXPECT_EQ(form.canvas->Textures(), nullptr);
        form.canvas->SetWinControl(form.control);
        EXPECT_EQ(uploads(recorder), 1);
        EXPECT_EQ(form.canvas->Textures()->Count(), 1U);
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.75), Qt::blue));
    }
}

TEST_F(Texture, EachCanvasHasItsOwnObject) {
    GlForm one({300, 300});
    GlForm other({300, 300});
    other.window->move(400, 0);
    GlForm::Settle();
    GlRecorder recorder;
    TZKOglPlane* inOne = addPlane(one, one.AddScene(), four());
    TZKOglPlane* inOther = addPlane(other, other.AddScene(), four());
    EXPECT_EQ(uploads(recorder), 2);
    recorder.Clear();
    for (int i = 0; i < 3; ++i) {
        inOne->Setdrehwinkel(0);
        inOther->Setdrehwinkel(0);
    }
    EXPECT_EQ(uploads(recorder), 0);
    EXPECT_TRUE(looksLike(at(one, 0.25, 0.75), Qt::blue));
    EXPECT_TRUE(looksLike(at(other, 0.25, 0.75), Qt::blue));

    // A picture that goes takes the objects of both along, and leaves the current context current.
    one.canvas->CheckCurrent();
    QOpenGLContext* current = QOpenGLContext::currentContext();
    ZkRemoveTexture("four.bmp");
    EXPECT_EQ(QOpenGLContext::currentContext(), current);
    EXPECT_EQ(one.canvas->Textures()->Count(), 0U);
    EXPECT_EQ(other.canvas->Textures()->Count(), 0U);
    recorder.Clear();
    one.canvas->Refresh();
    other.canvas->Refresh();
    EXPECT_EQ(uploads(recorder), 2) << "what still shows it loads it again";
    EXPECT_TRUE(looksLike(at(one, 0.25, 0.75), Qt::blue));
    EXPECT_TRUE(looksLike(at(other, 0.25, 0.75), Qt::blue));
}

TEST_F(Texture, AChangedFileIsSeenAfterItsPictureWasRemoved) {
    for (const bool played : {false, true}) {
        GlForm form({300, 300});
        TZKOglPlane* plane = addPlane(form, form.AddScene(), four());
        if (played)
            playAlways(plane);
        form.canvas->Refresh();
        QImage plain(1, 1, QImage::Format_RGB32);
        plain.fill(Qt::magenta);
        files.Write("four.bmp", Bmp(plain));
        form.canvas->Refresh();
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::red));
        ZkRemoveTexture("four.bmp");
        form.canvas->Refresh();
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::magenta));
        ZkRemoveTextures();
    }
}

TEST_F(Texture, OfTwoPicturesTheOtherStaysWithOpenGl) {
    GlForm form({300, 300});
    TZKOglScene* scene = form.AddScene();
    const QString first = four();
    QImage green(2, 2, QImage::Format_RGB32);
    green.fill(Qt::green);
    const QString second = files.Write("green.bmp", Bmp(green));
    addPlane(form, scene, first)->Settranslation({-4, -2, 0});
    addPlane(form, scene, second)->Settranslation({0, -2, 0});
    form.canvas->Refresh();
    GlRecorder recorder;
    ZkRemoveTexture("four.bmp");
    form.canvas->Refresh();
    EXPECT_EQ(uploads(recorder), 1) << "the one that went, as it is still shown";
    EXPECT_TRUE(looksLike(form.PixelAt({60, 180}), Qt::red));
    EXPECT_TRUE(looksLike(form.PixelAt({210, 150}), Qt::green));
}

TEST_F(Texture, APictureThatGoesWhileItIsShownDoesNoHarm) {
    GlForm form({300, 300});
    TZKOglScene* scene = form.AddScene();
    addPlane(form, scene, four());
    TZKOglPlane* second = addPlane(form, scene, four());
    addPlane(form, scene, four());
    QObject::connect(second, &TZkShape::OnPlay, second, [] { ZkRemoveTextures(); });
    form.canvas->Refresh();
    form.canvas->Refresh();
    EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::red));
    form.canvas->Select(150, 150);
    delete second;
    form.canvas->Refresh();
    EXPECT_TRUE(looksLike(at(form, 0.75, 0.75), Qt::yellow));
    ZkRemoveTextures();
    form.canvas->SetWinControl(nullptr);
    ZkRemoveTextures();
}

// --- what is not there ----------------------------------------------------------------------------------------------

TEST_F(Texture, APictureThatCannotBeLoadedIsAskedForOnceInRepaints) {
    for (const bool played : {false, true}) {
        GlForm form({300, 300});
        TZKOglScene* scene = form.AddScene();
        const QString missing = files.Path("missing.bmp");
        const QStringList message{"can't load texture: " + missing};
        TZKOglPlane* plane = addPlane(form, scene, QString());
        if (played)
            playAlways(plane);
        plane->getAttributes()->getTexture()->SetPicture(missing);
        QStringList texts = form.messages.Take();
        EXPECT_GE(texts.size(), 1);
        EXPECT_LE(texts.size(), 2) << "once by the texture, once in the first repaint";
        texts.removeAll(message.front());
        EXPECT_EQ(texts, QStringList());
        for (int i = 0; i < 5; ++i) {
            scene->DoUpdateNow();
            plane->Setdrehwinkel(0);
        }
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::white)) << "drawn without a picture";
        EXPECT_EQ(form.messages.Take(), QStringList());

        // Whoever asks outside of a repaint is told again; and once it can be loaded it is seen.
        EXPECT_EQ(ZkgetTextureItem(missing), nullptr);
        EXPECT_EQ(form.messages.Take(), message);
        files.Write("missing.bmp", Bmp(QImage(four())));
        ASSERT_TRUE(ZkgetTextureItem(missing));
        scene->DoUpdateNow();
        EXPECT_TRUE(looksLike(at(form, 0.25, 0.25), Qt::red));
        QFile::remove(missing);
        ZkRemoveTextures();
        form.messages.Take();
    }
}

TEST_F(Texture, VisibleWithoutAPictureIsNot) {
    GlForm form;
    TTexture* texture = form.canvas->getAttributes()->getTexture();
    texture->SetVisible(true);
    EXPECT_FALSE(texture->GetVisible());
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    texture->SetWidth(2);
    texture->SetHeight(2);
    texture->SetPixels(std::make_shared<const std::vector<std::uint8_t>>(11));
    texture->SetVisible(true);
    EXPECT_FALSE(texture->GetVisible()) << "a byte is missing";
    texture->SetWidth(-2);
    texture->SetHeight(-2);
    texture->SetVisible(true);
    EXPECT_FALSE(texture->GetVisible());
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

TEST_F(Texture, PixelsOfTheApplicationsOwn) {
    GlForm form;
    TTexture* texture = form.canvas->getAttributes()->getTexture();
    texture->SetWidth(2);
    texture->SetHeight(1);
    auto pixels = std::make_shared<const std::vector<std::uint8_t>>(std::vector<std::uint8_t>{255, 0, 0, 0, 255, 0});
    texture->SetPixels(pixels);
    GlRecorder recorder;
    texture->SetVisible(true);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 2);
    std::array<GLubyte, 6> back{};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, back.data());
    EXPECT_TRUE(std::equal(back.begin(), back.end(), pixels->begin()));
    texture->SetVisible(true);
    EXPECT_EQ(uploads(recorder), 1);
    texture->SetWidth(1);
    texture->SetVisible(true);
    EXPECT_EQ(uploads(recorder), 2) << "the same bytes are another picture in another size";

    // What nobody holds any more goes when the next picture comes.
    texture->SetPixels(nullptr);
    texture->SetVisible(false);
    pixels.reset();
    EXPECT_EQ(form.canvas->Textures()->Count(), 1U);
    texture->SetPixels(std::make_shared<const std::vector<std::uint8_t>>(3));
    EXPECT_EQ(form.canvas->Textures()->Count(), 1U);
    texture->SetPixels(nullptr);
}

// --- calls and state ------------------------------------------------------------------------------------------------

TEST_F(Texture, ADescriptionIsPassedOnInItsOrder) {
    GlForm form;
    TTexture* texture = form.canvas->getAttributes()->getTexture();
    const PTextureItem item = ZkgetTextureItem(four());
    TTextureKind kind;
    kind.Picture = item->Name;
    kind.EnvMode = gldecal;
    kind.Filter = gllinear;
    kind.Repeat = false;
    form.canvas->SetChanging(true);
    GlRecorder recorder;
    texture->SettextureKind(kind);
    GLint name = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &name);
    EXPECT_NE(name, 0);
    const std::string bind = "glBindTexture(GL_TEXTURE_2D, " + std::to_string(name) + ")";
    const Calls expected = Calls{bind} + OnMatrix("GL_TEXTURE", "glScaled(1, 1, 1)") +
                           OnMatrix("GL_TEXTURE", "glScaled(1, 1, 1)") +
                           Calls{"glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, 8449)",
                                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP)",
                                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP)",
                                 bind,
                                 "glTexImage2D(GL_TEXTURE_2D, 0, 3, 2, 2, 0, 6407, 5121)",
                                 bind,
                                 "glEnable(GL_TEXTURE_2D)"};
    EXPECT_EQ(recorder.Calls(), expected);
    EXPECT_EQ(texture->GetEnvmode(), gldecal);
    EXPECT_EQ(texture->GetFilter(), gllinear);
    EXPECT_FALSE(texture->GetREpeat());
    EXPECT_TRUE(texture->GetVisible());
    recorder.Clear();
    texture->SetPicture(QString());
    EXPECT_EQ(recorder.CallsTo({"glBindTexture", "glEnable", "glDisable"}),
              (Calls{"glBindTexture(GL_TEXTURE_2D, 0)", "glDisable(GL_TEXTURE_2D)"}));
    form.canvas->SetChanging(false);
}

TEST_F(Texture, ParametersGoToOpenGlAndComeBack) {
    GlForm form;
    TTexture* texture = form.canvas->getAttributes()->getTexture();
    for (const TTexFilter filter : {gllinear, glnearest}) {
        texture->SetFilter(filter);
        EXPECT_EQ(texture->GetFilter(), filter);
    }
    texture->SetFilter(gllinear);
    texture->SetFilter(TTexFilter(7));
    EXPECT_EQ(texture->GetFilter(), gllinear);
    for (const TTexEnvMode mode : {gldecal, glblend, glmodulate}) {
        texture->SetEnvmode(mode);
        EXPECT_EQ(texture->GetEnvmode(), mode);
    }
    texture->SetRepeat(false);
    EXPECT_FALSE(texture->GetREpeat());
    texture->SetRepeat(true);
    EXPECT_TRUE(texture->GetREpeat());
}

TEST_F(Texture, APictureThatComesUpWhileAListIsCompiledDoesNotBecomePartOfIt) {
    GlForm form({300, 300});
    TZKOglScene* scene = form.AddScene();
    auto* shape = new TZKOglShape(form.window.get());
    GlForm::MakeFlat(shape->getAttributes()->getMaterial(), 0xFFFFFF);
    const QString picture = four();
    TlistOFxyzArray face;
    const std::array<TXYZ, 4> corners{TXYZ{-2, -2, 0}, {-2, 2, 0}, {2, 2, 0}, {2, -2, 0}};
    ArrayAddData(*face.AddArray(), 4, corners.data());
    QObject::connect(shape, &TZkShape::OnPlay, form.canvas, [&] {
        TTextureKind kind;
        kind.Picture = picture;
        form.canvas->getAttributes()->getTexture()->SettextureKind(kind);
        form.canvas->PolyPolyline3D(face);
    });
    GlRecorder recorder;
    shape->SetDisplayList(scene);
    EXPECT_EQ(uploads(recorder), 1);
    const QColor seen = form.PixelAt({140, 160});
    EXPECT_TRUE(looksLike(seen, Qt::yellow) || looksLike(seen, Qt::red) || looksLike(seen, Qt::green) ||
                looksLike(seen, Qt::blue));
    // Were the bytes in the list, it would bring them back.
    const TPixels pixels = ZkgetTextureItem(picture)->Pixels;
    form.canvas->CheckCurrent();
    form.canvas->Textures()->Bind(pixels);
    const std::array<GLubyte, 12> magenta{255, 0, 255, 255, 0, 255, 255, 0, 255, 255, 0, 255};
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 2, 2, GL_RGB, GL_UNSIGNED_BYTE, magenta.data());
    form.canvas->Refresh();
    EXPECT_TRUE(looksLike(form.PixelAt({140, 160}), Qt::magenta));
}

TEST_F(Texture, CompilingLeavesTheApplicationsOwnTextureAlone) {
    GlForm form({300, 300});
    TZKOglScene* scene = form.AddScene();
    form.canvas->CheckCurrent();
    const std::array<GLubyte, 3> magenta{255, 0, 255};
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, 3, 1, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, magenta.data());
    TZKOglPlane* plane = addPlane(form, scene, four());
    for (int i = 0; i < 2; ++i) {
        form.canvas->Refresh();
        plane->Setdrehwinkel(0);
        form.canvas->Select(150, 150);
        GLint bound = -1;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_EQ(bound, 0);
        EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
        std::array<GLubyte, 3> back{};
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, back.data());
        EXPECT_EQ(back, magenta);
    }
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}
