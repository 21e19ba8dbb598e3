#include <gtest/gtest.h>

#include "zul/frame.h"

namespace {

class TrapTranslation : public testing::Environment {
public:
    void SetUp() override { zul::RegisterKelSigfpeHandler(); }
};

// A translated trap leaves the trapping mode behind; no test is to see that of the one before.
class DefaultModeAfterEachTest : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override { zul::ResetFpuStates(); }
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new TrapTranslation);
    testing::UnitTest::GetInstance()->listeners().Append(new DefaultModeAfterEachTest);
    return RUN_ALL_TESTS();
}
