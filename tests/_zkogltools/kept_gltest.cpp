// What a scene keeps of its shapes shows the same picture, and gives the same hits, as playing every shape anew.
#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"
#include "picturefiles.h"
#include "random.h"
#include "rounds.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>
#include <zk/_zkxyarrays.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

/// A handler that does nothing: a shape that has one belongs to user code and is played each time.
void playAlways(TCustomShape* shape) {
    QObject::connect(shape, &TZkShape::OnPlay, shape, [] {});
}

TCustomShape* addShape(Random& random, GlForm& form, TZKOglScene* scene) {
    TCustomShape* shape = nullptr;
    switch (random.Below(5)) {
        case 0: {
            auto* box = new TZKOglBox(form.window.get());
            box->SetA(random.Between(-0.2, 1.5));
            box->SetB(random.Between(0, 1.5));
            box->SetC(random.OneIn(5) ? 0 : random.Between(0, 1.5));
            shape = box;
            break;
        }
        case 1: {
            auto* sphere = new TZKOglSphere(form.window.get());
            sphere->SetR(random.OneIn(8) ? 0 : random.Between(0.1, 1));
            sphere->SetResolution(random.Below(15));
            shape = sphere;
            break;
        }
        case 2: {
            auto* cylinder = new TZKOglCylinder(form.window.get());
            cylinder->SetBaseRadius(random.Between(0, 1));
            cylinder->SetTopRadius(random.Between(0, 1));
            cylinder->SetCylinderHeight(random.Between(-1, 2));
            shape = cylinder;
            break;
        }
        case 3: {
            auto* plane = new TZKOglPlane(form.window.get());
            plane->SetData({"0/0/0", "0/1/0", "0.3/0.3/0", "1/0/0", "", "1/1/0.5", "1.5/1/0.5", "1.5/2/0.5", "-",
                            "-1/-1/0", "-1/0/0", "0/0/0.2", "0/-1/0"});
            shape = plane;
            break;
        }
        default:
            shape = new TZKOglRefShape(form.window.get());
            if (scene->GetShapeCount() > 0)
                static_cast<TZKOglRefShape*>(shape)->SetReference(
                    dynamic_cast<TCustomShape*>(scene->GetZkShape(random.Below(scene->GetShapeCount()))));
    }
    shape->Settranslation(random.Point(4));
    if (!random.OneIn(3)) {
        shape->Setdrehwinkel(random.Between(-200, 200));
        shape->SetDrehGerade({random.OneIn(2) ? TXYZ{0, 0, 0} : random.Point(0.3), random.Point(1)});
    }
    if (random.OneIn(4))
        shape->SetScale(random.OneIn(4) ? 0 : random.Between(-0.5, 2));
    shape->SetVisible(!random.OneIn(6));
    shape->SetParentAttributes(random.OneIn(4));
    shape->SetNohit(random.OneIn(6));
    Tmaterialkind material;
    material.Ambient = random.Color();
    material.Diffuse = random.OneIn(3) ? material.Ambient : random.Color();
    material.Specular = random.Color();
    material.Emission = random.OneIn(2) ? 0 : random.Color();
    material.Shininess = random.OneIn(9) ? 200 : random.Between(0, 128);
    material.Translucent = random.OneIn(4) ? random.Between(0, 1) : 1;
    material.Face = random.OneIn(6) ? glfrontandback : glfront;
    if (material.Shininess > 128)
        material.Shininess = 128;
    shape->getAttributes()->getMaterial()->SetMAterialKind(material);
    shape->getAttributes()->getPolyStyle()->SetMode(random.OneIn(5) ? TPAMode(random.Below(3)) : glfill);
    if (random.OneIn(3)) {
        TTexture* texture = shape->getAttributes()->getTexture();
        texture->SetPicture(random.OneIn(2) ? "zk-kept-one.bmp" : "zk-kept-two.bmp");
        texture->SetFilter(random.OneIn(2) ? gllinear : glnearest);
        texture->SetEnvmode(TTexEnvMode(random.Below(3)));
        texture->SetRepeat(random.OneIn(2));
        texture->Setbase({random.Point(1), {1, 0, 0}, {0, 0, 1}, {0, -1, 0}});
        texture->SetVisible(!random.OneIn(4));
    }
    shape->SetDisplayList(scene);
    return shape;
}

void addPictures() {
    ZkAddBitmaptexture("zk-kept-one", Gradient({16, 16}));
    ZkAddBitmaptexture("zk-kept-two", Gradient({8, 8}).rgbSwapped());
}

/// A scene of many kinds of shapes, user code among them.
std::vector<TCustomShape*> fill(Random& random, GlForm& form, TZKOglScene* scene, int count) {
    const ChangeBracket bracket(form.canvas);
    addPictures();
    std::vector<TCustomShape*> shapes;
    for (int i = 0; i < count; ++i) {
        shapes.push_back(addShape(random, form, scene));
        if (random.OneIn(12))
            playAlways(shapes.back());
    }
    return shapes;
}

void addLight(GlForm& form) {
    auto* light = new TZKOglLight(form.window.get());
    light->SetPosition({3, 5, 10});
    light->setattenuation(0);
    light->SetZkOglCanvas(form.canvas);
    light->SetEnabled(true);
}

/// How many pixels differ by more than rounding.
int difference(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            count += std::abs(p.red() - q.red()) > 3 || std::abs(p.green() - q.green()) > 3 ||
                     std::abs(p.blue() - q.blue()) > 3;
        }
    return count;
}

int litPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) != QColor(0, 0, 0);
    return count;
}

struct Hit {
    std::int32_t object;
    double depth;
    std::int32_t names;
    bool operator==(const Hit&) const = default;
};

void PrintTo(const Hit& hit, std::ostream* out) {
    *out << hit.object << " at " << hit.depth << " (" << hit.names << ")";
}

std::vector<Hit> hits(TZkOglCanvas& canvas) {
    std::vector<Hit> all;
    for (const THitItem& item : canvas.Hits())
        all.push_back({item.HitObject, item.Depth, item.NameCount});
    return all;
}

}  // namespace

TEST(Kept, ThePictureIsThatOfPlayingEveryShape) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        Random random(seed);
        GlForm form;
        addLight(form);
        TZKOglScene* scene = form.AddScene();
        const std::vector<TCustomShape*> shapes = fill(random, form, scene, 60);
        if (seed % 3 == 0)
            form.canvas->SetTriangleResolution(0.7);
        const auto change = [&](int times) {
            for (int i = 0; i < times; ++i) {
                TCustomShape* shape = shapes[std::size_t(random.Below(int(shapes.size())))];
                switch (random.Below(7)) {
                    case 0:
                        shape->Settranslation(random.Point(4));
                        break;
                    case 1:
                        shape->SetVisible(!shape->GetVisible());
                        break;
                    case 2:
                        shape->getAttributes()->getMaterial()->SetEmission(random.Color());
                        break;
                    case 3:
                        shape->SetParentAttributes(!shape->GetParentAttributes());
                        break;
                    case 4:
                        scene->getAttributes()->getTexture()->SetPicture("zk-kept-two.bmp");
                        scene->getAttributes()->getTexture()->SetVisible(random.OneIn(2));
                        break;
                    case 5:
                        shape->SetDisplayList(nullptr);
                        shape->SetDisplayList(scene);
                        break;
                    default:
                        scene->getAttributes()->getMaterial()->SetEmission(random.Color());
                }
            }
        };
        change(10);
        const QImage kept = form.Screen();
        EXPECT_GT(litPixels(kept), 3000) << seed;
        {
            const ChangeBracket bracket(form.canvas);
            for (TCustomShape* shape : shapes)
                playAlways(shape);
            scene->Invalidate();
        }
        EXPECT_EQ(form.messages.Take(), QStringList()) << seed;
        // Edges may lie a hair's breadth beside: a matrix that is turned to and fro drifts.
        EXPECT_LE(difference(kept, form.Screen()), 90) << seed;
    }
}

TEST(Kept, TheHitsAreThoseOfPlayingEveryShape) {
    int found = 0;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        Random random(100 + seed);
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        scene->SetTranslation(random.Point(1));
        scene->Setdrehwinkel(random.Between(0, 90));
        const std::vector<TCustomShape*> shapes = fill(random, form, scene, 60);
        if (seed % 2)
            form.canvas->SetBlickWinkel(random.Between(5, 40));
        form.canvas->SetZoomFactor(random.Between(0.5, 2));
        std::vector<QPoint> places;
        for (int i = 0; i < 60; ++i)
            places.push_back({random.Below(300), random.Below(300)});
        std::vector<std::vector<Hit>> withBounds;
        for (const QPoint& place : places) {
            form.canvas->Select(place.x(), place.y());
            withBounds.push_back(hits(*form.canvas));
            found += int(withBounds.back().size());
        }
        for (TCustomShape* shape : shapes)
            playAlways(shape);
        scene->Changed(nullptr);
        for (std::size_t i = 0; i < places.size(); ++i) {
            form.canvas->Select(places[i].x(), places[i].y());
            EXPECT_EQ(withBounds[i], hits(*form.canvas)) << seed << " " << places[i].x() << " " << places[i].y();
        }
    }
    EXPECT_GT(found, 150);
}

TEST(Kept, APickPlaysOnlyWhatItCanMeet) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    for (int i = 0; i < 400; ++i)
        form.AddBox(scene, 0x0000FF, {0.3, 0.3, 0.3}, {i % 20 * 0.45 - 4.5, i / 20 * 0.45 - 4.5, 0});
    TZKOglShape* user = new TZKOglShape(form.window.get());
    user->SetDisplayList(scene);
    int played = 0;
    QObject::connect(user, &TZkShape::OnPlay, [&] { ++played; });
    scene->Changed(nullptr);
    played = 0;
    GlRecorder recorder;
    form.canvas->Select(150, 150);
    EXPECT_LE(recorder.Count("glLoadName"), 10);
    EXPECT_GE(recorder.Count("glLoadName"), 2);
    EXPECT_EQ(played, 2) << "what user code draws is not known: it is asked";
    EXPECT_EQ(recorder.Count("glCallList"), 0);
}

// A change is drawn; what has not changed is called.
TEST(Kept, OneChangeDrawsOneGroup) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    std::vector<TZKOglBox*> boxes;
    for (int i = 0; i < 400; ++i)
        boxes.push_back(form.AddBox(scene, 0x0000FF, {0.3, 0.3, 0.3}, {i % 20 * 0.45 - 4.5, i / 20 * 0.45 - 4.5, 0}));
    GlRecorder recorder;
    const auto drawn = [&](const std::function<void()>& change) {
        form.canvas->Refresh();
        recorder.Clear();
        change();
        return recorder.Count("glVertex3d") / 24;
    };
    EXPECT_LE(drawn([&] { boxes[200]->Settranslation({4, 4, 0}); }), 45);
    EXPECT_GE(drawn([&] { boxes[200]->Settranslation({3, 4, 0}); }), 1);
    EXPECT_LE(drawn([&] { boxes[7]->getAttributes()->getMaterial()->SetEmission(0x00FF00); }), 45);
    EXPECT_LE(drawn([&] { boxes[399]->SetVisible(false); }), 45);
    EXPECT_LE(drawn([&] { form.AddBox(scene, 0xFF0000, {1, 1, 1}, {0, 0, 2}); }), 5 * 45) << "several setters";
    EXPECT_LE(drawn([&] { delete boxes[100]; }), 90);
    EXPECT_EQ(drawn([&] { scene->Changed(nullptr); }), 0);
    EXPECT_EQ(drawn([&] { scene->DoUpdateNow(); }), 0);
    EXPECT_EQ(drawn([&] { scene->SetTranslation({1, 0, 0}); }), 0);
    EXPECT_EQ(drawn([&] {
                  form.canvas->SetTriangleResolution(1);
                  scene->Changed(nullptr);
              }) > 399,
              true);
}

// However shapes come and go, groups neither fall to pieces nor grow without end.
TEST(Kept, GroupsStayAsLargeAsTheyAreMeantToBe) {
    GlForm form({60, 60});
    Random random(7);
    TZKOglScene* scene = form.AddScene();
    std::vector<TZKOglBox*> boxes;
    {
        const ChangeBracket bracket(form.canvas);
        for (int i = 0; i < 400; ++i)
            boxes.push_back(form.AddBox(scene, 0x0000FF, {0.3, 0.3, 0.3}, random.Point(4)));
    }
    for (int i = 0; i < Rounds(600); ++i) {
        const auto at = std::size_t(random.Below(int(boxes.size())));
        delete boxes[at];
        boxes[at] = form.AddBox(scene, 0x0000FF, {0.3, 0.3, 0.3}, random.Point(4));
    }
    GlRecorder recorder;
    scene->Changed(nullptr);
    const int lists = recorder.Count("glCallList");
    EXPECT_GE(lists, 400 / 45);
    EXPECT_LE(lists, 400 / 2);
}

TEST(Kept, ValuesThatChangeWithoutNewsShowAtTheNextCompilation) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    ASSERT_EQ(form.PixelAt({150, 150}), QColor(254, 0, 0));
    Tmaterial* material = box->getAttributes()->getMaterial();
    material->SetChanging(false);  // one bracket end too many: silent from now on
    material->SetEmission(0x00FF00);
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(254, 0, 0));
    scene->Changed(nullptr);
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(0, 254, 0));

    box->BeginLoading();
    box->Settranslation({2, -1, -1});
    box->Loaded();
    EXPECT_TRUE(form.canvas->Select(150 + 90, 150)) << "a pick sees the shape where it is";
    scene->Changed(nullptr);
    EXPECT_EQ(form.PixelAt({150 + 90, 150}), QColor(0, 254, 0));
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(0, 0, 0));
}

TEST(Kept, AHandlerMayChangeWhatIsDrawnAfterIt) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* user = new TZKOglShape(form.window.get());
    user->SetDisplayList(scene);
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    TZKOglBox* other = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {2, -1, -1});
    int told = 0;
    std::function<void()> action = [] {};
    QObject::connect(user, &TZkShape::OnPlay, [&] { action(); });
    const auto run = [&](std::function<void()> what) {
        action = std::move(what);
        scene->Changed(nullptr);
        action = [] {};
    };
    run([&] { box->getAttributes()->getMaterial()->SetEmission(0x00FF00); });
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(0, 254, 0)) << "a change in front of a shape's turn counts";
    EXPECT_EQ(form.PixelAt({240, 150}), QColor(254, 0, 0));
    QMetaObject::Connection late;
    run([&] {
        if (!late)
            late = QObject::connect(box, &TZkShape::OnPlay, [&] { ++told; });
    });
    EXPECT_EQ(told, 1);
    run([&] { form.canvas->SetTriangleResolution(0.5); });
    EXPECT_EQ(form.PixelAt({240, 150}), QColor(254, 0, 0));
    run([&] { delete std::exchange(other, nullptr); });
    EXPECT_EQ(form.PixelAt({240, 150}), QColor(0, 0, 0));
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(0, 254, 0));
    run([&] { box->SetVisible(false); });
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(0, 0, 0));
}

// A handler may leave the matrix turned: what follows is drawn, and found, where it then is.
TEST(Kept, AMatrixThatUserCodeLeavesMovesWhatFollows) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* user = new TZKOglShape(form.window.get());
    user->SetDisplayList(scene);
    QObject::connect(user, &TZkShape::OnPlay, [] { glTranslated(1.5, 0, 0); });
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {1, 1, 1}, {-3, -0.5, -1});
    // drawn twice, as every shape of this kind: moved by 3
    EXPECT_EQ(form.PixelAt({150 + 15, 150}), QColor(254, 0, 0));
    ASSERT_TRUE(form.canvas->Select(150 + 15, 150));
    EXPECT_EQ(form.canvas->Hits()[0].HitObject, box->HitName());
    EXPECT_FALSE(form.canvas->Select(150 - 75, 150));
}

TEST(Kept, AShapeMayBeInTheListTwice) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {1, 1, 1}, {-0.5, -0.5, -1});
    box->Settranslation({-4, -0.5, -1});
    box->SetDrehgeradePkt("0.5/0/0");
    box->Setdrehwinkel(180);  // what it leaves behind moves the second one by 2
    scene->AddShape(box);
    scene->AddShape(box);
    form.canvas->Refresh();
    const QImage kept = form.Screen();
    std::vector<bool> hit;
    for (int x = 5; x < 300; x += 10)
        hit.push_back(form.canvas->Select(x, 180));
    EXPECT_GT(std::count(hit.begin(), hit.end(), true), 3);
    playAlways(box);
    scene->Changed(nullptr);
    EXPECT_EQ(difference(kept, form.Screen()), 0);
    for (int x = 5; x < 300; x += 10)
        EXPECT_EQ(form.canvas->Select(x, 180), hit[std::size_t(x / 10)]) << x;
}

/// A class of user code: nothing of it is kept.
class Wobble : public TZKOglBox {
  public:
    using TZKOglBox::TZKOglBox;
    void Doplay() override {
        ++count;
        TZKOglBox::Doplay();
    }
    int count = 0;
};

TEST(Kept, AClassOfUserCodeIsPlayedAtEveryCompilation) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* wobble = new Wobble(form.window.get());
    wobble->SetDisplayList(scene);
    EXPECT_FALSE(wobble->CanBeKept());
    wobble->count = 0;
    scene->Changed(nullptr);
    scene->Changed(nullptr);
    EXPECT_EQ(wobble->count, 2);
}

TEST(Kept, ANewContextDrawsEverythingAnew) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->SetWinControl(nullptr);
    form.canvas->SetWinControl(form.control);
    form.CountSwaps();
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(254, 0, 0));
    EXPECT_TRUE(form.canvas->Select(150, 150));
}

// Most faces are triangles and convex quadrilaterals and skip the cutting: it would give the same.
TEST(Kept, AConvexFaceIsItsOwnOnlyPiece) {
    GlForm form;
    Random random(3);
    auto* plane = new TZKOglPlane(form.window.get());
    plane->SetDisplayList(form.AddScene());
    int convex = 0;
    for (int round = 0; round < 300; ++round) {
        const TXYZ origin = random.Point(3);
        const TXYZ u = random.Point(1);
        const TXYZ v = random.Point(1);
        TlistOFxyzArray face;
        TXYZARRAY* outline = face.AddArray();
        QStringList lines;
        const int corners = 3 + random.Below(2);
        for (int i = 0; i < corners; ++i) {
            const TXYZ point = Add(Add(origin, Mul(u, random.Between(0, 1))), Mul(v, random.Between(0, 1)));
            lines += QString("%1/%2/%3").arg(point.x, 0, 'g', 17).arg(point.y, 0, 'g', 17).arg(point.z, 0, 'g', 17);
            ArrayAppendData(*outline, &point);
        }
        plane->SetData(lines);
        GlRecorder recorder;
        plane->Doplay();
        Calls expected;
        TlistOFxyzArray pieces;
        DOConvex(face, pieces);
        convex += pieces.Count() == 1;
        for (int i = 0; i < pieces.Count(); ++i) {
            expected.push_back("glBegin(9)");
            for (const TXYZ& point : std::as_const(*pieces.Getitem(i)).Items())
                expected.push_back(Call("glVertex3d", {point.x, point.y, point.z}));
        }
        const auto withoutClosing = [](Calls calls) {
            Calls open;
            std::size_t begin = 0;
            for (const std::string& call : calls) {
                if (call.rfind("glBegin", 0) == 0) {
                    if (open.size() > begin + 1 && open.back() == open[begin + 1])
                        open.pop_back();
                    begin = open.size();
                }
                open.push_back(call);
            }
            if (open.size() > begin + 2 && open.back() == open[begin + 1])
                open.pop_back();
            return open;
        };
        EXPECT_EQ(recorder.CallsTo({"glBegin", "glVertex3d"}), withoutClosing(expected)) << round;
    }
    EXPECT_GT(convex, 150);
}

// `AddShape` alone lists a shape; it still belongs to no scene, so it has no canvas to draw on.
TEST(Kept, AShapeThatIsOnlyListedDrawsNothing) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {-3, 0, 0});
    auto* listed = new TZKOglBox(form.window.get());
    GlForm::MakeFlat(listed->getAttributes()->getMaterial(), 0x00FF00);
    scene->AddShape(listed);
    form.AddBox(scene, 0xFF0000, {1, 1, 1}, {2, 0, 0});
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt({150 + 15, 150 - 15}), QColor(0, 0, 0));
    EXPECT_EQ(form.PixelAt({150 - 75, 150 - 15}), QColor(254, 0, 0));
    EXPECT_EQ(form.PixelAt({150 + 75, 150 - 15}), QColor(0, 0, 254));
    // In another scene of the canvas it draws, and here as well.
    TZKOglScene* home = form.AddScene();
    listed->SetDisplayList(home);
    home->SetTranslation({0, 2, 0});
    scene->Changed(nullptr);
    EXPECT_EQ(form.PixelAt({150 + 15, 150 - 15}), QColor(0, 254, 0));
    EXPECT_EQ(form.PixelAt({150 + 15, 150 - 75}), QColor(0, 254, 0));
}

// What OpenGL makes of a turn about no line is its own affair, and so is where the shape is.
TEST(Kept, AShapeThatTurnsAboutNoLineIsPlayed) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    TZKOglBox* other = form.AddBox(scene, 0x00FF00, {1, 1, 1}, {3, 3, 0});
    box->SetDrehGerade({{0, 0, 0}, {0, 0, 0}});
    box->Setdrehwinkel(30);
    GlRecorder recorder;
    scene->Changed(nullptr);
    EXPECT_EQ(recorder.Count("glRotated"), 2) << "there and back, at every compilation";
    recorder.Clear();
    scene->Changed(nullptr);
    EXPECT_EQ(recorder.Count("glRotated"), 2);
    EXPECT_TRUE(form.canvas->Select(150, 150));
    EXPECT_EQ(form.canvas->Hits().front().HitObject, box->HitName());
    EXPECT_TRUE(form.canvas->Select(255, 45));
    EXPECT_EQ(form.canvas->Hits().front().HitObject, other->HitName());
    box->Setdrehwinkel(0);
    recorder.Clear();
    scene->Changed(nullptr);
    EXPECT_EQ(recorder.Count("glRotated"), 0) << "it is kept";
}
