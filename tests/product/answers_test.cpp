#include <gtest/gtest.h>

#include <filesystem>

#include "product/round.h"
#include "support/case_name.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

/// What the product answered natively (scripts/record_answers.sh), here once more.
namespace product {

void PrintTo(const Question& question, std::ostream* stream) {
    *stream << question.name;
}

namespace {

// Before the round leaves the current folder, which may be that of another drive.
const std::filesystem::path kAnswers = std::filesystem::absolute(ANSWERS);

class Answer : public ::testing::TestWithParam<Question> {
protected:
    const std::filesystem::path recorded = kAnswers / GetParam().name;
};

TEST_P(Answer, IsTheNativeOne) {
    if (!std::filesystem::exists(recorded)) {
        SKIP_OR_FAIL("no answers: scripts/record_answers.sh records them");
    }
    EXPECT_EQ(firstDifference(test_support::readFile(recorded), theRound().ask(GetParam())), "");
}

INSTANTIATE_TEST_SUITE_P(Product, Answer, ::testing::ValuesIn(theRound().questions()),
                         test_support::caseName<Question>);

TEST(Product, IsAskedAboutRealPhotos) {
    if (!theRound().hasPhotos()) {
        SKIP_OR_FAIL("the photos are missing: the round is about the sample alone");
    }
    EXPECT_TRUE(theRound().hasPhotos());
}

}  // namespace
}  // namespace product
