#include "support.h"

#include <zk/_zkcomtypes/graphicsobject.h>
#include <zk/_zkcomtypes/material.h>

#include <gtest/gtest.h>

#include <limits>

using namespace zk;

namespace {

class Counter : public TZkgraphicsobject {
  public:
    using TZkgraphicsobject::changeCount_;
};

}  // namespace

TEST(GraphicsObject, AFreshOneHasNoBatch) {
    const Counter object;
    EXPECT_EQ(0, object.changeCount_);
    EXPECT_FALSE(object.GetChanging());
}

TEST(GraphicsObject, ChangeDNotifiesWithTheObjectAsSender) {
    TZkgraphicsobject object;
    Changes changes(object);
    object.ChangeD();
    object.ChangeD();
    EXPECT_EQ(2, changes.take());
}

TEST(GraphicsObject, ABatchIsOneEventFiredByTheClosingCall) {
    Tmaterial material;
    Changes changes(material);
    material.SetChanging(true);
    EXPECT_TRUE(material.GetChanging());
    material.SetAmbient(1);
    material.SetDiffuse(2);
    material.SetSpecular(3);
    EXPECT_EQ(0, changes.take());
    material.SetChanging(false);
    EXPECT_EQ(1, changes.take());
    EXPECT_FALSE(material.GetChanging());
}

TEST(GraphicsObject, ABatchWithoutChangeNotifiesAsWell) {
    TZkgraphicsobject object;
    Changes changes(object);
    object.SetChanging(true);
    object.SetChanging(false);
    EXPECT_EQ(1, changes.take());
}

TEST(GraphicsObject, BatchesNest) {
    TZkgraphicsobject object;
    Changes changes(object);
    object.SetChanging(true);
    object.SetChanging(true);
    object.ChangeD();
    object.SetChanging(false);
    EXPECT_EQ(0, changes.take());
    EXPECT_TRUE(object.GetChanging());
    object.SetChanging(false);
    EXPECT_EQ(1, changes.take());
}

TEST(GraphicsObject, ASurplusCloseSilencesUntilItIsMadeGood) {
    Tmaterial material;
    Changes changes(material);
    material.SetChanging(false);
    EXPECT_EQ(0, changes.take());
    material.SetAmbient(1);
    material.SetAmbient(2);
    EXPECT_EQ(0, changes.take());
    material.SetChanging(true);  // the count is 0 again, and below 1
    EXPECT_EQ(1, changes.take());
    EXPECT_FALSE(material.GetChanging());
    material.SetAmbient(3);
    EXPECT_EQ(1, changes.take());
}

TEST(GraphicsObject, TheCountGoesAsFarDownAsItIsTaken) {
    Counter object;
    Changes changes(object);
    for (int i = 0; i < 3; ++i)
        object.SetChanging(false);
    EXPECT_EQ(-3, object.changeCount_);
    object.SetChanging(true);
    object.SetChanging(true);
    EXPECT_EQ(0, changes.take());
    object.SetChanging(true);
    EXPECT_EQ(1, changes.take());
    EXPECT_EQ(0, object.changeCount_);
}

TEST(GraphicsObject, ACloseBelowAnOpenBatchEndsItsFlag) {
    Counter object;
    object.SetChanging(false);
    object.SetChanging(true);
    EXPECT_FALSE(object.GetChanging());
    object.SetChanging(true);
    EXPECT_TRUE(object.GetChanging());
}

TEST(GraphicsObject, TheCountWrapsAtItsEnds) {
    Counter object;
    object.changeCount_ = std::numeric_limits<std::int32_t>::max();
    object.SetChanging(true);
    EXPECT_EQ(std::numeric_limits<std::int32_t>::min(), object.changeCount_);
    object.SetChanging(false);
    EXPECT_EQ(std::numeric_limits<std::int32_t>::max(), object.changeCount_);
}

TEST(GraphicsObject, AssigningIsNotSupported) {
    TZkgraphicsobject object;
    Tmaterial material;
    try {
        object.AssignTo(&material);
        FAIL();
    } catch (const EAssignError& error) {
        EXPECT_STREQ("Cannot assign a TZkgraphicsobject to a Tmaterial", error.what());
    }
    EXPECT_THROW(material.AssignTo(nullptr), std::runtime_error);
    QObject other;
    EXPECT_THROW(material.AssignTo(&other), EAssignError);
}
