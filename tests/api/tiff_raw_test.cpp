#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "api/photo_with_tool.h"

namespace exiv2_wp {
namespace {

using test_support::LogLine;

std::string modelLine(const std::string& model) {
    return "Exif.Image.Model Ascii 1 " + model + "\n";
}

struct Model {
    const char* name;
    const char* model;
    bool isTiffRaw;
};

void PrintTo(const Model& model, std::ostream* stream) {
    *stream << model.model;
}

constexpr std::array<Model, 12> kModels = {{
    {"TheFirstModel", "canon eos-1d", true},
    {"TheSecondModel", "Canon EOS-1Ds", true},
    {"TheThirdModel", "EOS D2000C", true},
    {"AModelOfTheListWithMoreBehindIt", "Canon EOS-1D Mark II", false},
    {"AModelOfTheListWithMoreBeforeIt", "Kodak EOS D2000C", false},
    {"APartOfAListedModel", "Canon EOS-1", false},
    {"TheFragmentAlone", "EOSDCS1B", true},
    {"TheFragmentAmongOtherWords", "Kodak EOSDCS1B FILM BACK", true},
    {"TheFragmentWithABlankInIt", "EOS DCS1B", false},
    {"TheFragmentWithoutItsEnd", "EOSDCS1", false},
    {"TheFragmentWithoutItsBeginning", "OSDCS1B", false},
    {"AnEmptyModel", "", false},
}};

class TiffRawModels : public PhotoWithTool, public ::testing::WithParamInterface<Model> {};

TEST_P(TiffRawModels, DecideFor) {
    photoHas(modelLine(GetParam().model));
    EXPECT_EQ(isTiffRaw(file), GetParam().isTiffRaw);
}

INSTANTIATE_TEST_SUITE_P(, TiffRawModels, ::testing::ValuesIn(kModels),
                         [](const auto& model) { return model.param.name; });

class TiffRaw : public PhotoWithTool {};

TEST_F(TiffRaw, IsNoFileWithoutMetadata) {
    EXPECT_FALSE(isTiffRaw(file));
}

TEST_F(TiffRaw, IsNoFileWithoutAModel) {
    photoHas("Exif.Image.UniqueCameraModel Ascii 13 Canon EOS-1D\n");
    EXPECT_FALSE(isTiffRaw(file));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(TiffRaw, LogsTheModelInLowerCaseAsATraceLine) {
    photoHas(modelLine("NIKON D70 \xC3\x84"));
    EXPECT_FALSE(isTiffRaw(file));
    const std::vector<LogLine> expected = {
        {static_cast<vesk::LogMessageType>(0), std::string("nikon d70 \xC3\x84")}};
    EXPECT_EQ(log.lines(), expected);
}

}  // namespace
}  // namespace exiv2_wp
