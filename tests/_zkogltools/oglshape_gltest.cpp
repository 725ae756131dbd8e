#include "glform.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools/oglshape.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

TEST(OglShape, OnPlayComesTwiceInThePlaceAndScaleOfTheShape) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* shape = new TZKOglShape(form.window.get());
    shape->Settranslation({1, 2, 0});
    shape->SetScale(2);
    std::vector<Tmatrix> matrices;
    QObject::connect(shape, &TZkShape::OnPlay, [&](QObject* sender) {
        EXPECT_EQ(sender, shape);
        matrices.push_back(form.canvas->GetOglModelMatrix());
    });
    shape->SetDisplayList(scene);
    ASSERT_EQ(matrices.size(), 2U);
    EXPECT_EQ(matrices[0], matrices[1]);
    EXPECT_NEAR(matrices[0][0][0], 2 * 0.2, 1e-6);
    EXPECT_NEAR(matrices[0][3][0], 0.2, 1e-6);
    EXPECT_NEAR(matrices[0][3][1], 0.4, 1e-6);
    form.canvas->Refresh();
    EXPECT_EQ(matrices.size(), 2U) << "a compiled scene is replayed without asking";
}

// User code may do what it likes to the scene it is drawn in.
TEST(OglShape, HandlersMayChangeAndDeleteWhatIsBeingPlayed) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* first = new TZKOglShape(form.window.get());
    auto* second = new TZKOglShape(form.window.get());
    int secondPlayed = 0;
    QObject::connect(second, &TZkShape::OnPlay, [&] { ++secondPlayed; });
    const auto delivered = [&](const std::function<void()>& action) {
        const QMetaObject::Connection connection = QObject::connect(first, &TZkShape::OnPlay, [&] { action(); });
        scene->Changed(nullptr);
        QObject::disconnect(connection);
    };
    first->SetDisplayList(scene);
    second->SetDisplayList(scene);
    secondPlayed = 0;

    form.TakeSwaps();
    delivered([&] { first->Settranslation({1, 0, 0}); });
    EXPECT_EQ(form.TakeSwaps(), 2) << "a change from within a repaint starts no other";
    delivered([&] { form.canvas->Refresh(); });
    EXPECT_EQ(form.TakeSwaps(), 2);
    EXPECT_EQ(secondPlayed, 4);

    delivered([&] {
        if (scene->GetShapeCount() == 2)
            (new TZKOglBox(form.window.get()))->SetDisplayList(scene);
    });
    EXPECT_EQ(scene->GetShapeCount(), 3);
    EXPECT_EQ(PendingError(*form.canvas), 0U);

    delivered([&] {
        delete second;
        second = nullptr;
    });
    EXPECT_EQ(scene->GetShapeCount(), 2);
    EXPECT_EQ(PendingError(*form.canvas), 0U);

    QObject::connect(first, &TZkShape::OnPlay, [&] {
        delete first;
        first = nullptr;
    });
    scene->Changed(nullptr);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(PendingError(*form.canvas), 0U);
    form.canvas->Refresh();

    auto* last = new TZKOglShape(form.window.get());
    QObject::connect(last, &TZkShape::OnPlay, [&] {
        delete scene;
        scene = nullptr;
    });
    last->SetDisplayList(scene);
    EXPECT_EQ(scene, nullptr);
    EXPECT_EQ(last->GetDisplayList(), nullptr);
    form.canvas->Refresh();
    EXPECT_TRUE(form.canvas->Scenes().empty());
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}
