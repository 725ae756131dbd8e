#include <zk/_zkxyz/errors.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace zk;

TEST(Errors, CarryTheirTextWordForWord) {
    EXPECT_STREQ(EError("Normalvektor 0").what(), "Normalvektor 0");
    EXPECT_STREQ(EConvertError("abc").what(), "abc");
    EXPECT_STREQ(EListError("").what(), "");
}

TEST(Errors, AreRuntimeErrors) {
    EXPECT_TRUE((std::is_base_of_v<std::runtime_error, EError>));
    EXPECT_TRUE((std::is_base_of_v<EError, EConvertError>));
    EXPECT_TRUE((std::is_base_of_v<EError, EListError>));
    EXPECT_FALSE((std::is_base_of_v<EConvertError, EListError>));
}

}  // namespace
