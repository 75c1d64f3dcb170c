#include <Zelmar01/tabs/ComCtlVersion.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

TEST(ComCtlVersion, newMeansBeyond448)
{
    EXPECT_FALSE(IsNewComCtlVersion(std::nullopt));
    EXPECT_FALSE(IsNewComCtlVersion(0x00040030U));
    EXPECT_TRUE(IsNewComCtlVersion(0x00040031U));
    EXPECT_TRUE(IsNewComCtlVersion(0x00050000U));
    EXPECT_TRUE(IsNewComCtlVersion(0xFFFF0000U)) << "compared without a sign";
}

TEST(ComCtlVersion, isThatOfTheSystem)
{
#ifdef _WIN32
    EXPECT_TRUE(IsNewComCtlVersion(ComCtlVersion()));
#else
    EXPECT_EQ(ComCtlVersion(), std::nullopt);
#endif
}
