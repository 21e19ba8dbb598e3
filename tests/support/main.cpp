#include <gtest/gtest.h>

#include <cstdlib>

#include "zul/frame.h"

namespace {

class TrapTranslation : public testing::Environment {
public:
    void SetUp() override { zul::RegisterKelSigfpeHandler(); }
};

// With ZUL_TEST_TRAPPING in the environment each test runs in trapping mode, as the numerical core does inside
// the call frame; a trap is then an exception that fails the test. Otherwise in the default mode, whatever the
// test before it left behind.
class ModeOfEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        if (std::getenv("ZUL_TEST_TRAPPING") != nullptr) zul::SetKelFpuStates();
    }
    void OnTestEnd(const testing::TestInfo&) override { zul::ResetFpuStates(); }
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new TrapTranslation);
    testing::UnitTest::GetInstance()->listeners().Append(new ModeOfEachTest);
    return RUN_ALL_TESTS();
}
