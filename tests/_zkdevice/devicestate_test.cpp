#include <zk/_zkdevice/devicestate.h>

#include <gtest/gtest.h>

using namespace zk;

TEST(DeviceState, OrderAndBits) {
    EXPECT_EQ(0, DsPainting);
    EXPECT_EQ(1, DsChanging);
    EXPECT_EQ(1U, sizeof(TDeviceState));
    TDeviceState state;
    EXPECT_EQ(0, state.Bits());
    state.Include(DsPainting);
    EXPECT_EQ(1, state.Bits());
    state.Include(DsChanging);
    EXPECT_EQ(3, state.Bits());
}

TEST(DeviceState, IsASet) {
    TDeviceState state;
    EXPECT_FALSE(state.Contains(DsPainting));
    state.Exclude(DsPainting);
    state.Include(DsChanging);
    state.Include(DsChanging);
    EXPECT_TRUE(state.Contains(DsChanging));
    EXPECT_FALSE(state.Contains(DsPainting));
    state.Exclude(DsChanging);
    EXPECT_EQ(TDeviceState(), state);
}

TEST(DeviceState, ValuesBeyondTheByteAreNeverIn) {
    TDeviceState state;
    state.Include(TDeviceStates(8));
    state.Include(TDeviceStates(200));
    EXPECT_EQ(TDeviceState(), state);
    EXPECT_FALSE(state.Contains(TDeviceStates(255)));
    state.Include(TDeviceStates(7));
    EXPECT_EQ(0x80, state.Bits());
}
