// Pictures of any size without a window: what they show, and what they leave alone.
#include "glform.h"

#include <zk/_zkoglcanvas/glapi.h>

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace zk;
using namespace zk::test;

namespace {

void fill(GlForm& form) {
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-2.5, -1, -1});
    form.AddBox(scene, 0x00FF00, {1, 3, 1}, {0.5, -1, 0});
    form.AddBox(scene, 0xFF0000, {0.5, 0.5, 0.5}, {2.5, 2.5, 1})->Setdrehwinkel(30);
    form.canvas->SetColor(0x302010);
    form.canvas->Refresh();
}

/// The share of pixels of `coarse` that are not those in the middle of their place in `fine`.
double difference(const QImage& coarse, const QImage& fine) {
    const int ratio = fine.width() / coarse.width();
    int different = 0;
    for (int y = 0; y < coarse.height(); ++y)
        for (int x = 0; x < coarse.width(); ++x)
            different += coarse.pixel(x, y) != fine.pixel(ratio * x + ratio / 2, ratio * y + ratio / 2) ? 1 : 0;
    return double(different) / (coarse.width() * coarse.height());
}

std::array<double, 16> matrix(GLenum name) {
    std::array<double, 16> values{};
    glGetDoublev(name, values.data());
    return values;
}

}  // namespace

TEST(Picture, IsThatOfTheScreen) {
    for (const QSize size : {QSize(300, 200), QSize(201, 333)}) {
        for (const double angle : {0.0, 20.0}) {
            GlForm form(size);
            fill(form);
            form.canvas->SetBlickWinkel(angle);
            form.canvas->SetProjectionbase({{0, 0, 0}, {0.8, 0, -0.6}, {0, 1, 0}, {0.6, 0, 0.8}});
            const QImage picture = form.canvas->Picture(size);
            EXPECT_EQ(picture, form.Screen().convertToFormat(QImage::Format_RGB32)) << angle;
        }
    }
}

TEST(Picture, ALargerOneShowsMoreAndARatioMakesItFiner) {
    GlForm form({300, 200});
    fill(form);
    const QImage screen = form.canvas->Picture({300, 200});
    EXPECT_EQ(form.canvas->Picture({600, 400}).copy(150, 100, 300, 200), screen);
    EXPECT_LT(difference(screen, form.canvas->Picture({900, 600}, 3)), 0.01);
    EXPECT_LT(difference(form.canvas->Picture({100, 67}, 1 / 3.0), screen.scaled(300, 201)), 0.05);
}

// Pictures larger than what is drawn at once are put together from parts, without seams.
TEST(Picture, LargerThanAnyScreen) {
    for (const double angle : {0.0, 30.0}) {
        GlForm form({300, 200});
        fill(form);
        form.canvas->SetBlickWinkel(angle);
        const QImage small = form.canvas->Picture({500, 410});
        const QImage large = form.canvas->Picture({5500, 4510}, 11);
        ASSERT_EQ(large.size(), QSize(5500, 4510));
        EXPECT_LT(difference(small, large), 0.01);
        // A line of the picture that begins in the left part and ends in the right one has two ends, and no gap.
        int changes = 0;
        for (int x = 1; x < large.width(); ++x)
            changes += large.pixel(x, 2255) != large.pixel(x - 1, 2255) ? 1 : 0;
        EXPECT_EQ(changes, 4) << "two boxes, and what is between and beside them";
    }
}

TEST(Picture, WithoutAControl) {
    GlForm form({300, 200});
    fill(form);
    const QImage expected = form.canvas->Picture({240, 160});
    form.canvas->SetWinControl(nullptr);
    form.canvas->SetWidth(77);
    form.canvas->SetHeight(66);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(form.canvas->Picture({240, 160}), expected);
    EXPECT_EQ(form.canvas->GetWinControl(), nullptr);
    EXPECT_FALSE(form.canvas->HasContext());
    EXPECT_EQ(form.canvas->GetWidth(), 77);
    EXPECT_EQ(form.canvas->GetHeight(), 66);
    form.canvas->SetWinControl(form.control);
    GlForm::Settle();
    EXPECT_EQ(form.Screen().convertToFormat(QImage::Format_RGB32), form.canvas->Picture({300, 200}));
    EXPECT_EQ(form.messages.Take(), QStringList());
}

TEST(Picture, OfAWindowThatIsHidden) {
    GlForm form({300, 200});
    fill(form);
    const QImage expected = form.canvas->Picture({300, 200});
    form.window->hide();
    GlForm::Settle();
    EXPECT_EQ(form.canvas->Picture({300, 200}), expected);
}

TEST(Picture, LeavesTheWindowAndOpenGlAsTheyWere) {
    GlForm form({300, 200});
    fill(form);
    form.canvas->SetBlickWinkel(15);
    form.canvas->SetTranslation({0.3, 0.2, 0});
    GlForm::Settle();
    const auto hits = [&form] {
        std::vector<std::int32_t> found;
        for (int x = 5; x < 300; x += 10)
            found.push_back(form.canvas->Select(x, 95) ? form.canvas->Hits()[0].HitObject : -1);
        return found;
    };
    const std::vector<std::int32_t> hitsBefore = hits();
    EXPECT_NE(hitsBefore, std::vector<std::int32_t>(30, -1));
    const QImage screen = form.Screen();
    const TRect port = form.canvas->getViewPort();
    const Tmatrix view = form.canvas->GetOglModelMatrix();
    const auto projection = matrix(GL_PROJECTION_MATRIX);
    form.TakeSwaps();
    EXPECT_FALSE(form.canvas->Picture({3000, 700}, 2.5).isNull());
    GlForm::Settle();
    EXPECT_EQ(form.TakeSwaps(), 0) << "nothing is repainted";
    EXPECT_EQ(form.Screen(), screen);
    EXPECT_EQ(form.canvas->GetOglModelMatrix(), view);
    EXPECT_EQ(matrix(GL_PROJECTION_MATRIX), projection);
    EXPECT_EQ(form.canvas->getViewPort().right, port.right);
    EXPECT_EQ(form.canvas->getViewPort().bottom, port.bottom);
    EXPECT_EQ(form.canvas->GetWidth(), 300);
    EXPECT_EQ(form.canvas->GetHeight(), 200);
    EXPECT_FALSE(form.canvas->IsPainting());
    EXPECT_EQ(PendingError(*form.canvas), 0U);
    EXPECT_EQ(hits(), hitsBefore);
    form.canvas->Refresh();
    EXPECT_EQ(form.Screen(), screen);
    EXPECT_GT(form.TakeSwaps(), 0) << "repaints go on";
}

TEST(Picture, WithinAChangeThatIsOpen) {
    GlForm form({300, 200});
    fill(form);
    form.TakeSwaps();
    form.canvas->SetChanging(true);
    form.canvas->SetColor(0x0000FF);
    const QImage picture = form.canvas->Picture({50, 50});
    EXPECT_EQ(picture.pixelColor(1, 1), QColor(254, 0, 0)) << "as it is by now";
    EXPECT_EQ(form.TakeSwaps(), 0);
    form.canvas->SetChanging(false);
    EXPECT_GT(form.TakeSwaps(), 0);
}

TEST(Picture, IsNullWhereThereCanBeNone) {
    GlForm form({300, 200});
    fill(form);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const QSize size : {QSize(0, 10), QSize(10, 0), QSize(-5, 5), QSize()})
        EXPECT_TRUE(form.canvas->Picture(size).isNull());
    for (const double ratio : {0.0, -1.0, nan, infinite})
        EXPECT_TRUE(form.canvas->Picture({10, 10}, ratio).isNull()) << ratio;
    EXPECT_TRUE(form.canvas->Picture({2000000000, 2000000000}).isNull());
    for (const double ratio : {1e-300, 1e300})
        EXPECT_FALSE(form.canvas->Picture({10, 10}, ratio).isNull()) << ratio;
    QImage inside(1, 1, QImage::Format_RGB32);
    QObject handlers;
    TZKOglScene* scene = form.canvas->Scenes()[0];
    QObject::connect(scene, &TDisplayList::OnPlay, &handlers, [&] { inside = form.canvas->Picture({10, 10}); });
    scene->DoUpdateNow();
    EXPECT_TRUE(inside.isNull()) << "not within a repaint";
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

TEST(Picture, HandlersMayDoWhatTheyWant) {
    enum class What { unbind, deleteCanvas, deleteScene, refresh, raise };
    for (const What what : {What::unbind, What::deleteCanvas, What::deleteScene, What::refresh, What::raise}) {
        GlForm form({300, 200});
        fill(form);
        TZKOglScene* scene = form.canvas->Scenes()[0];
        TZkOglCanvas* canvas = form.canvas;
        scene->Invalidate();
        QObject::connect(scene, &TDisplayList::OnPlay, scene, [&] {
            switch (what) {
                case What::unbind:
                    canvas->SetWinControl(nullptr);
                    break;
                case What::deleteCanvas:
                    delete std::exchange(form.canvas, nullptr);
                    break;
                case What::deleteScene:
                    delete scene;
                    break;
                case What::refresh:
                    canvas->Refresh();
                    break;
                case What::raise:
                    throw std::runtime_error("user code gave up");
            }
        });
        const QImage picture = canvas->Picture({100, 100});
        EXPECT_EQ(picture.isNull(), what == What::unbind || what == What::deleteCanvas) << int(what);
        EXPECT_EQ(form.messages.Take().size(), what == What::raise ? 1 : 0);
        if (form.canvas) {
            EXPECT_FALSE(form.canvas->IsPainting());
        }
    }
}
