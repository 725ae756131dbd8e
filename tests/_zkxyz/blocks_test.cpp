#include "sanitizers.h"

#include <zk/_zkxyz/blocks.h>

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

namespace {

using namespace zk::detail;

const int record = 0;
const int otherRecord = 0;

TEST(Blocks, AreZeroAndGrowWithZeros) {
    char* block = static_cast<char*>(BlockNew(3));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "\0\0\0", 3), 0);
    std::memcpy(block, "abc", 3);
    for (std::size_t bytes = 3; bytes < 5000; bytes += 7) {
        block = static_cast<char*>(BlockGrow(&record, block, bytes, bytes + 7));
        ASSERT_EQ(std::memcmp(block, "abc", 3), 0);
        for (std::size_t i = 0; i < 7; ++i)
            ASSERT_EQ(block[bytes + i], 0);
        block[bytes + 6] = 'x';
    }
    EXPECT_TRUE(BlockFree(&record, block));
}

TEST(Blocks, OfNoBytesAreNull) {
    EXPECT_EQ(BlockNew(0), nullptr);
    void* block = BlockGrow(&record, nullptr, 0, 8);
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(BlockFree(&record, block));
}

TEST(Blocks, OthersAreNeverFreed) {
    int mine = 5;
    EXPECT_FALSE(BlockFree(&record, &mine));
    EXPECT_FALSE(BlockFree(&record, nullptr));
    void* block = BlockNew(8);
    EXPECT_FALSE(BlockFree(&record, static_cast<char*>(block) + 1));
    EXPECT_TRUE(BlockFree(&record, block));
}

TEST(Blocks, OnLoanStayWithTheirOwner) {
    char* block = static_cast<char*>(BlockNew(3));
    std::memcpy(block, "abc", 3);
    LoanBegin(&record, block);
    EXPECT_FALSE(BlockFree(&record, block));
    char* grown = static_cast<char*>(BlockGrow(&record, block, 3, 6));
    EXPECT_NE(grown, block);
    EXPECT_EQ(std::memcmp(grown, "abc\0\0\0", 6), 0);
    EXPECT_EQ(std::memcmp(block, "abc", 3), 0);
    EXPECT_TRUE(LoanEnd(&record));
    EXPECT_FALSE(LoanEnd(&record));
    EXPECT_TRUE(BlockFree(&record, grown));
    EXPECT_TRUE(BlockFree(&otherRecord, block));
}

TEST(Blocks, AreSafeFromSeveralThreads) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([] {
            for (int i = 0; i < 200; ++i) {
                void* block = BlockNew(8);
                for (std::size_t bytes = 8; bytes < 256; bytes += 8)
                    block = BlockGrow(&block, block, bytes, bytes + 8);
                if (!BlockFree(&block, block))
                    std::abort();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

#ifdef ZKOGL_ADDRESS_SANITIZER
TEST(BlocksDeathTest, SpareRoomIsClosedToTheSanitizer) {
    char* block = static_cast<char*>(BlockNew(8));
    block = static_cast<char*>(BlockGrow(&record, block, 8, 16));
    block = static_cast<char*>(BlockGrow(&record, block, 16, 24));  // 32 are allocated
    volatile char* outside = block + 24;
    EXPECT_DEATH(*outside = 1, "AddressSanitizer");
    EXPECT_TRUE(BlockFree(&record, block));
}
#endif

}  // namespace
