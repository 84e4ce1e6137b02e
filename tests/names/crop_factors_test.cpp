#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/names/crop_factor_rows.h"
#include "support/latch.h"

namespace exiv2_wp {
namespace {

using internal::CropFactorRow;
using internal::cropFactorRows;

std::string imageLensForm(std::string name) {
    ImageLens_canonizeName(name);
    return name;
}

// The lookup in its plain form: an ordered map, walked from its smallest key, each key brought into
// canonical form on the way.
class ScannedTable {
public:
    ScannedTable() {
        for (const CropFactorRow& row : cropFactorRows()) {
            models_.emplace(row.model, row.cropFactor);
        }
    }

    [[nodiscard]] float find(const std::string& make, const std::string& model) const {
        const std::string query = imageLensForm(make + model);
        for (const auto& [name, cropFactor] : models_) {
            if (imageLensForm(name) == query) {
                return cropFactor;
            }
        }
        return 1.0F;
    }

    [[nodiscard]] const std::map<std::string, float>& models() const { return models_; }

private:
    std::map<std::string, float> models_;
};

// Stands first, so that nobody has asked before.
TEST(CropFactorFirstUse, ByManyThreadsAtOnceIsRightForAll) {
    constexpr int kThreads = 8;
    test_support::Latch start(kThreads);
    std::array<float, kThreads> found{};
    {
        std::vector<std::jthread> threads;
        for (float& result : found) {
            threads.emplace_back([&start, &result] {
                start.arrive_and_wait();
                result = getCropFactor("Canon", "EOS 90D");
            });
        }
    }
    EXPECT_EQ(found, (std::array<float, kThreads>{1.62F, 1.62F, 1.62F, 1.62F, 1.62F, 1.62F, 1.62F,
                                                  1.62F}));
}

TEST(CropFactorRows, Are457) {
    EXPECT_EQ(cropFactorRows().size(), 457U);
}

TEST(CropFactorRows, Name446Models) {
    EXPECT_EQ(ScannedTable().models().size(), 446U);
}

TEST(CropFactorRows, NameNoTwoModelsWithOneCanonicalName) {
    std::set<std::string> forms;
    for (const CropFactorRow& row : cropFactorRows()) {
        forms.insert(imageLensForm(std::string(row.model)));
    }
    EXPECT_EQ(forms.size(), 446U);
}

TEST(CropFactorRows, GroupsHaveTheirSizes) {
    std::map<float, int> sizes;
    const ScannedTable scanned;
    for (const auto& [model, cropFactor] : scanned.models()) {
        ++sizes[cropFactor];
    }
    const std::map<float, int> expected = {
        {1.00F, 28},  {1.29F, 5}, {1.61F, 95}, {1.62F, 2},  {1.85F, 2},  {1.97F, 1},
        {2.70F, 6},   {2.73F, 2}, {3.93F, 1},  {4.55F, 15}, {4.84F, 35}, {5.41F, 2},
        {5.49F, 138}, {5.65F, 1}, {6.02F, 69}, {6.44F, 31}, {7.21F, 9},  {7.61F, 4}};
    EXPECT_EQ(sizes, expected);
}

// The first row of a model, its later value, and the value that counts.
struct Repeat {
    const char* model;
    float first;
    float later;
};

constexpr std::array<Repeat, 11> kRepeats = {{
    {"Canon PowerShot SX30 IS", 5.49F, 5.49F},
    {"Canon PowerShot SD990 IS", 4.55F, 4.55F},
    {"Canon Digital IXUS 980 IS", 4.55F, 4.55F},
    {"Canon PowerShot SD1400 IS", 5.49F, 5.49F},
    {"Canon IXUS 130", 5.49F, 5.49F},
    {"Canon IXY 400F", 5.49F, 5.49F},
    {"Canon ELPH 500 HS", 5.49F, 5.49F},
    {"Canon IXY 50S", 5.49F, 5.49F},
    {"Canon PowerShot S100", 6.44F, 4.55F},
    {"Canon PowerShot S110", 6.44F, 4.55F},
    {"Canon PowerShot S200", 6.44F, 4.55F},
}};

class CropFactorRepeats : public ::testing::TestWithParam<Repeat> {};

TEST_P(CropFactorRepeats, TheFirstRowCounts) {
    std::vector<float> values;
    for (const CropFactorRow& row : cropFactorRows()) {
        if (row.model == GetParam().model) {
            values.push_back(row.cropFactor);
        }
    }
    EXPECT_EQ(values, (std::vector{GetParam().first, GetParam().later}));
    EXPECT_EQ(getCropFactor("", GetParam().model), GetParam().first);
}

INSTANTIATE_TEST_SUITE_P(, CropFactorRepeats, ::testing::ValuesIn(kRepeats),
                         [](const auto& query) { return imageLensForm(query.param.model); });

// What a camera's maker and model give.
struct Query {
    const char* name;
    const char* make;
    const char* model;
    float cropFactor;
};

void PrintTo(const Query& query, std::ostream* stream) {
    *stream << ::testing::PrintToString(query.make) << ", "
            << ::testing::PrintToString(query.model);
}

constexpr std::array<Query, 19> kQueries = {{
    {"AFullFrameCamera", "Canon ", "EOS 6D", 1.00F},
    {"ACameraWithASmallerSensor", "Canon", "EOS 20Da", 1.61F},
    {"ATwoPartNameWithoutABlankBetween", "Canon", "EOS-1D X Mark II", 1.00F},
    {"ASpellingWithoutHyphen", "Canon", "EOS 1DX", 1.00F},
    {"ASpellingInCapitals", "", "CANON EOS 5D MARK IV", 1.00F},
    {"SlashesAndQuotes", "\"Can/on\"", "/EOS-1D\"", 1.29F},
    {"TheSecondPartAlone", "", "Canon EOS-1D", 1.29F},
    {"TheFirstPartAlone", "Canon EOS-1D", "", 1.29F},
    {"ASplitInsideAWord", "Canon PowerS", "hot Pro 1", 3.93F},
    {"ARepeatedModel", "Canon", "PowerShot S100", 6.44F},
    {"AModelStoredWithATrailingBlank", "Canon", "PowerShot S300", 6.44F},
    {"ANoBreakSpaceThatIsMissing", "Canon", "PowerShot G9 X Mark II", 1.00F},
    {"ANoBreakSpaceThatIsThere", "Canon", "PowerShot G9 X Mark II\xC2\xA0", 2.70F},
    {"TheOtherNoBreakSpaceThatIsMissing", "Canon", "PowerShot G1 X Mark II", 1.00F},
    {"TheOtherNoBreakSpaceThatIsThere", "Canon", "PowerShot G1 X Mark II\xC2\xA0", 1.85F},
    {"AnUnknownModel", "Canon", "EOS 9999D", 1.00F},
    {"AnotherMaker", "Nikon", "EOS 20D", 1.00F},
    {"AnEmptyQuery", "", "", 1.00F},
    {"NothingButDroppedCharacters", " \"/-", "- /", 1.00F},
}};

class CropFactors : public ::testing::TestWithParam<Query> {};

TEST_P(CropFactors, AnswersFor) {
    EXPECT_EQ(getCropFactor(GetParam().make, GetParam().model), GetParam().cropFactor);
}

INSTANTIATE_TEST_SUITE_P(, CropFactors, ::testing::ValuesIn(kQueries),
                         [](const auto& query) { return query.param.name; });

TEST(CropFactor, OfEveryListedModelIsThatOfItsFirstRow) {
    const ScannedTable scanned;
    for (const auto& [model, cropFactor] : scanned.models()) {
        EXPECT_EQ(getCropFactor("", model), cropFactor) << model;
    }
}

TEST(CropFactor, OfAVeryLongQueryIsOne) {
    const std::string longName(1 << 20, 'x');
    EXPECT_EQ(getCropFactor("Canon EOS 20D", longName), 1.0F);
    EXPECT_EQ(getCropFactor(longName, "Canon EOS 20D"), 1.0F);
}

TEST(CropFactor, OfAModelBehindManyBlanksIsFound) {
    EXPECT_EQ(getCropFactor("Canon" + std::string(1000, ' '), "EOS 20D"), 1.61F);
}

// Changes a few bytes, so that most queries come close to a model and some still spell it.
std::string mutated(std::string name, std::mt19937& random) {
    constexpr std::string_view kBytes = " \"/-aD1x\xC2\xA0";
    for (auto changes = random() % 4; changes > 0; --changes) {
        const char byte = kBytes[random() % kBytes.size()];
        const std::size_t at = name.empty() ? 0 : random() % name.size();
        switch (random() % 4) {
            case 0:
                name.insert(at, 1, byte);
                break;
            case 1:
                name.erase(at, 1);
                break;
            case 2:
                name.insert(at, 1, ' ');
                break;
            default:
                if (!name.empty()) {
                    name[at] =
                        static_cast<char>(std::toupper(static_cast<unsigned char>(name[at])));
                }
        }
    }
    return name;
}

TEST(CropFactor, OfMutatedModelsIsWhatTheScanGives) {
    const ScannedTable scanned;
    std::mt19937 random(2);
    for (const CropFactorRow& row : cropFactorRows()) {
        const std::string name = mutated(std::string(row.model), random);
        const std::size_t split = random() % (name.size() + 1);
        const std::string make = name.substr(0, split);
        const std::string model = name.substr(split);
        ASSERT_EQ(getCropFactor(make, model), scanned.find(make, model)) << name;
    }
}

TEST(CropFactor, OfRandomNamesIsWhatTheScanGives) {
    const ScannedTable scanned;
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        std::string name(random() % 50, '\0');
        std::generate(name.begin(), name.end(), [&] { return static_cast<char>(random()); });
        ASSERT_EQ(getCropFactor(name, ""), scanned.find(name, ""));
    }
}

}  // namespace
}  // namespace exiv2_wp
