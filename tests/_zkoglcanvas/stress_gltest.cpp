// Windows that are resized, hidden, shown and repainted at random, thousands of times. ZKOGL_STRESS_STEPS in the
// environment says how often; the least is what every run of the tests can afford.
#include "glform.h"
#include "random.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>

#include <QCoreApplication>
#include <QMainWindow>
#include <gtest/gtest.h>

#include <algorithm>

using namespace zk;
using namespace zk::test;

namespace {

constexpr int fewestSteps = 2000;

int stepsToMake() {
    return std::max(fewestSteps, qEnvironmentVariableIntValue("ZKOGL_STRESS_STEPS"));
}

/// A window with a canvas, some shapes and a light.
struct Place {
    Place() {
        scene = form.AddScene();
        form.canvas->SetChanging(true);
        box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        sphere = new TZKOglSphere(form.window.get());
        sphere->Settranslation({2, 2, 0});
        sphere->SetDisplayList(scene);
        light = new TZKOglLight(form.window.get());
        light->SetZkOglCanvas(form.canvas);
        light->SetEnabled(true);
        form.canvas->SetChanging(false);
    }

    /// As at the start, and shown.
    void Restore() {
        form.control->setParent(form.window.get());
        form.control->setGeometry(20, 10, 300, 300);
        form.window->resize(340, 320);
        form.window->move(40, 30);
        form.control->show();
        form.window->show();
        form.window->raise();
        form.canvas->SetZoomFactor(1);
        form.canvas->SetBlickWinkel(0);
        sphere->SetVisible(true);
    }

    GlForm form;
    TZKOglScene* scene = nullptr;
    TZKOglBox* box = nullptr;
    TZKOglSphere* sphere = nullptr;
    TZKOglLight* light = nullptr;
};

void step(Random& random, Place& place, QMainWindow& elsewhere) {
    GlForm& form = place.form;
    switch (random.Below(16)) {
        case 0:
            form.control->QWidget::resize(random.Below(400), random.Below(400));
            break;
        case 1:
            form.window->resize(random.Below(500) + 1, random.Below(500) + 1);
            break;
        case 2:
            form.control->hide();
            break;
        case 3:
        case 4:
            form.control->show();
            break;
        case 5:
            form.window->hide();
            break;
        case 6:
        case 7:
            form.window->show();
            break;
        case 8:
            form.canvas->Refresh();
            break;
        case 9:
            form.control->repaint();
            break;
        case 10:
            form.control->update();
            break;
        case 11:
            form.canvas->SetZoomFactor(0.5 + random.Below(10) * 0.2);
            break;
        case 12:
            form.canvas->SetBlickWinkel(random.Below(45));
            break;
        case 13:
            form.canvas->Select(random.Below(300), random.Below(300));
            break;
        case 14:
            place.sphere->SetVisible(random.Below(2));
            break;
        default:
            // rarely, as it makes a new context: another window, none at all, or the first one
            if (random.Below(4) == 0) {
                const int where = random.Below(3);
                form.control->setParent(where == 0   ? form.window.get()
                                        : where == 1 ? static_cast<QWidget*>(&elsewhere)
                                                     : nullptr);
                form.control->setVisible(random.Below(2));
            } else {
                form.window->move(random.Below(300), random.Below(300));
            }
            break;
    }
    if (random.Below(3) != 0)
        QCoreApplication::processEvents();
}

}  // namespace

TEST(Stress, ResizesHidesShowsAndRepaintsInAnyOrder) {
    Random random(6101);
    Place one;
    Place other;
    QMainWindow elsewhere;
    elsewhere.setGeometry(500, 400, 300, 300);
    elsewhere.show();
    const auto picture = [&](Place& place) {
        place.Restore();
        place.form.window->raise();
        GlForm::Settle();
        place.form.canvas->Refresh();
        return place.form.Screen();
    };
    const QImage expected = picture(one);
    ASSERT_EQ(expected.pixelColor(150, 150), QColor(254, 0, 0));
    ASSERT_EQ(picture(other), expected);
    const int steps = stepsToMake();
    for (int i = 1; i <= steps; ++i) {
        step(random, random.Below(2) ? one : other, elsewhere);
        if (i % 200 != 0 && i != steps)
            continue;
        for (Place* place : {&one, &other}) {
            ASSERT_EQ(picture(*place), expected) << "after " << i << " steps";
            ASSERT_EQ(PendingError(*place->form.canvas), 0U);
            ASSERT_TRUE(place->form.canvas->Select(150, 150));
            ASSERT_EQ(HitTarget::Of(place->form.canvas->Hits()[0].HitObject), place->box);
            ASSERT_EQ(place->form.messages.Take(), QStringList()) << "after " << i << " steps";
        }
    }
    one.Restore();
    other.Restore();
}
