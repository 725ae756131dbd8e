#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkogltools/oglshape.h>
#include <zk/_zkogltools/refshape.h>
#include <zk/_zkxyz/errors.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

struct CopyStage {
    CopyStage() : scene(form.AddScene()), box(form.AddBox(scene, 0x0000FF, {1, 1, 1}, {-4, -4, 0})) {}
    TZKOglRefShape* Copy(TCustomShape* of, const TXYZ& at) {
        auto* copy = new TZKOglRefShape(form.window.get());
        copy->Settranslation(at);
        copy->SetDisplayList(scene);
        copy->SetReference(of);
        return copy;
    }
    QColor At(double x, double y) { return form.PixelAt({150 + 30 * x, 150 - 30 * y}); }
    bool Pick(double x, double y) { return form.canvas->Select(int(150 + 30 * x), int(150 - 30 * y)); }
    GlForm form;
    TZKOglScene* scene;
    TZKOglBox* box;
};

}  // namespace

TEST(RefShape, DrawsTheOtherInItsPlacementInsideItsOwn) {
    CopyStage stage;
    TZKOglRefShape* copy = stage.Copy(stage.box, {5, 6, 0});
    EXPECT_EQ(stage.At(-3.5, -3.5), red);
    EXPECT_EQ(stage.At(1.5, 2.5), red) << "5 - 4 and 6 - 4";
    copy->SetScale(0.5);
    EXPECT_EQ(stage.At(3.25, 4.25), red) << "the copy's scale holds for the other's placement, too";
    EXPECT_EQ(stage.At(1.5, 2.5), black);
    EXPECT_EQ(stage.box->GetScale(), 1);
}

TEST(RefShape, ACopyIsVisibleAsItIsItself) {
    CopyStage stage;
    TZKOglRefShape* copy = stage.Copy(stage.box, {5, 6, 0});
    stage.box->SetVisible(false);
    EXPECT_EQ(stage.At(-3.5, -3.5), black);
    EXPECT_EQ(stage.At(1.5, 2.5), red);
    EXPECT_FALSE(stage.box->GetVisible());
    stage.box->SetVisible(true);
    copy->SetVisible(false);
    EXPECT_EQ(stage.At(-3.5, -3.5), red);
    EXPECT_EQ(stage.At(1.5, 2.5), black);
}

TEST(RefShape, AClickOnTheCopyIsTheCopys) {
    CopyStage stage;
    TZKOglRefShape* copy = stage.Copy(stage.box, {5, 6, 0});
    ASSERT_TRUE(stage.Pick(1.5, 2.5));
    ASSERT_EQ(stage.form.canvas->Hits().size(), 1U);
    EXPECT_EQ(stage.form.canvas->Hits()[0].HitObject, copy->HitName());
    ASSERT_TRUE(stage.Pick(-3.5, -3.5));
    EXPECT_EQ(stage.form.canvas->Hits()[0].HitObject, stage.box->HitName());
    EXPECT_TRUE(stage.scene->IsCompiled()) << "a pick compiles nothing";

    stage.box->SetNohit(true);
    EXPECT_FALSE(stage.Pick(-3.5, -3.5));
    EXPECT_TRUE(stage.Pick(1.5, 2.5)) << "what a copy draws is the copy's, however the original stands to picks";
    EXPECT_TRUE(stage.box->GetNohit());
    copy->SetNohit(true);
    EXPECT_FALSE(stage.Pick(1.5, 2.5));
}

TEST(RefShape, RefusesItselfAndWhatRefersToIt) {
    CopyStage stage;
    TZKOglRefShape* a = stage.Copy(stage.box, {0, 0, 0});
    TZKOglRefShape* b = stage.Copy(a, {0, 0, 0});
    const auto refusal = [](TZKOglRefShape* to, TCustomShape* reference) -> std::string {
        try {
            to->SetReference(reference);
        } catch (const EError& error) {
            return error.what();
        }
        return "accepted";
    };
    EXPECT_EQ(refusal(a, a), " Zyklischer Verweis ");
    EXPECT_EQ(refusal(a, b), " Zyklischer Verweis ");
    EXPECT_EQ(a->GetReference(), stage.box);
    EXPECT_EQ(refusal(a, nullptr), "accepted");
    EXPECT_EQ(refusal(b, stage.box), "accepted");
}

// A circle of three passes the check, which looks two levels deep. Playing it ends all the same.
TEST(RefShape, ALongerCircleEnds) {
    CopyStage stage;
    TZKOglRefShape* a = stage.Copy(nullptr, {1, 0, 0});
    TZKOglRefShape* b = stage.Copy(a, {1, 0, 0});
    TZKOglRefShape* c = stage.Copy(b, {1, 0, 0});
    a->SetReference(c);
    GlRecorder recorder;
    stage.scene->Changed(nullptr);
    // From each of the three on once round: itself, the two others, and itself again, now without drawing. A shape that
    // is played moves six times; the box is kept as it was.
    EXPECT_EQ(recorder.Count("glTranslated"), 6 * 3 * 4);
    stage.Pick(0, 0);
    stage.form.canvas->Refresh();
    EXPECT_EQ(stage.At(-3.5, -3.5), red);
}

TEST(RefShape, LosesItsReferenceWithItAlsoWhileItIsDrawn) {
    CopyStage stage;
    TZKOglRefShape* copy = stage.Copy(stage.box, {5, 6, 0});
    delete stage.box;
    EXPECT_EQ(copy->GetReference(), nullptr);
    EXPECT_EQ(stage.At(1.5, 2.5), black);

    auto* drawn = new TZKOglShape;  // no owner: told all the same
    drawn->SetDisplayList(stage.scene);
    copy->SetReference(drawn);
    QObject::connect(drawn, &TZkShape::OnPlay, [&] {
        delete drawn;
        drawn = nullptr;
    });
    stage.scene->Changed(nullptr);
    EXPECT_EQ(drawn, nullptr);
    EXPECT_EQ(copy->GetReference(), nullptr);

    auto* last = new TZKOglShape(stage.form.window.get());
    auto* far = new TZKOglScene(stage.form.window.get());
    far->SetZkOglCanvas(stage.form.canvas);
    far->SetVisible(false);
    last->SetDisplayList(far);
    copy->SetReference(last);
    QObject::connect(last, &TZkShape::OnPlay, [&] {
        delete copy;
        copy = nullptr;
    });
    stage.scene->Changed(nullptr);
    EXPECT_EQ(copy, nullptr);
    EXPECT_TRUE(last->GetVisible());
    EXPECT_FALSE(last->GetNohit());
}

TEST(RefShape, AShapeWithoutThisCanvasIsNotDrawn) {
    CopyStage stage;
    GlForm other;
    other.window->move(500, 400);
    GlForm::Settle();
    TZKOglBox* foreign = other.AddBox(other.AddScene(), 0x0000FF, {1, 1, 1}, {0, 0, 0});
    TZKOglBox homeless;
    TZKOglRefShape* copy = stage.Copy(foreign, {0, 0, 0});
    EXPECT_TRUE(stage.form.canvas->CheckCurrent());
    EXPECT_EQ(PendingError(*other.canvas), 0U);
    EXPECT_EQ(stage.At(0.5, 0.5), black);
    copy->SetReference(&homeless);
    EXPECT_EQ(stage.At(0.5, 0.5), black);
}

TEST(RefShape, OneProperty) {
    TZKOglRefShape copy;
    TZKOglBox box;
    const QMetaObject& meta = TZKOglRefShape::staticMetaObject;
    ASSERT_EQ(meta.propertyCount() - meta.propertyOffset(), 1);
    EXPECT_STREQ(meta.property(meta.propertyOffset()).name(), "ReferenceShape");
    EXPECT_EQ(copy.property("ReferenceShape").value<TCustomShape*>(), nullptr);
    ASSERT_TRUE(copy.setProperty("ReferenceShape", QVariant::fromValue<TCustomShape*>(&box)));
    EXPECT_EQ(copy.GetReference(), &box);
}
