#include "exiv2_wrapper/exiftool/request_protocol.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <sstream>

#include "exiftool/scripted_channel.h"

namespace exiftool::internal {
namespace {

std::string answerOf(ToolChannel& channel) {
    std::string answer = readAnswer(channel);
    trimAnswer(answer);
    return answer;
}

std::string answerOf(std::vector<std::string> chunks) {
    ScriptedChannel channel(std::move(chunks));
    return answerOf(channel);
}

// The same, literally: zero-terminated chunks, the whole answer searched after each, carriage
// returns taken out one at a time.
std::string literalAnswerOf(ToolChannel& channel) {
    std::stringstream answer;
    std::array<char, 512> buffer{};
    while (const std::size_t count = channel.read({buffer.data(), 511})) {
        buffer[count] = '\0';
        answer << buffer.data();
        const std::string text = answer.str();
        if (text.size() >= 7 && text.find("{ready}") != std::string::npos) {
            break;
        }
    }
    std::string text = answer.str();
    for (std::size_t at = text.find('\r'); at != std::string::npos; at = text.find('\r', at)) {
        text.erase(at, 1);
    }
    if (text.size() >= 8 && text.compare(text.size() - 8, 8, " {ready}") == 0) {
        text.erase(text.size() - 8);
    }
    return text;
}

TEST(RequestProtocol, PutsTheCharacterSetBeforeAndExecuteBehindTheLines) {
    EXPECT_EQ(frameRequest({"-Lens\n-LensID", "-s2", "a photo.jpg"}),
              "-charset\nfilename=utf8\n-Lens\n-LensID\n-s2\na photo.jpg\n-execute\n");
}

TEST(RequestProtocol, SendsAnEmptyElementAsAnEmptyLine) {
    EXPECT_EQ(frameRequest({""}), "-charset\nfilename=utf8\n\n-execute\n");
    EXPECT_EQ(frameRequest({}), "-charset\nfilename=utf8\n-execute\n");
}

TEST(RequestProtocol, FindsAMarkerThatChunksTearApart) {
    EXPECT_EQ(answerOf({"Lens: a\n{re", "ad", "y}\n", "next"}), "Lens: a\n{ready}\n");
}

TEST(RequestProtocol, FindsAMarkerThatIsTornApartAnywhere) {
    const std::string marker = "{ready}";
    for (std::size_t at = 1; at < marker.size(); ++at) {
        EXPECT_EQ(answerOf({"Lens: a\n" + marker.substr(0, at), marker.substr(at) + "\n", "next"}),
                  "Lens: a\n{ready}\n")
            << at;
    }
}

TEST(RequestProtocol, LeavesWhatFollowsTheMarkersChunkToTheNextAnswer) {
    ScriptedChannel channel({"Title: {ready}", " or not\n{ready}\n"});

    EXPECT_EQ(answerOf(channel), "Title:");
    EXPECT_EQ(answerOf(channel), " or not\n{ready}\n");
}

TEST(RequestProtocol, ReadsNoMoreThan511BytesAtATime) {
    const std::string first(511 - 7, 'a');
    ScriptedChannel channel({first + "{ready}" + "next"});

    EXPECT_EQ(answerOf(channel), first + "{ready}");
    EXPECT_EQ(channel.rest(), "next");
}

TEST(RequestProtocol, CutsAChunkAtAZeroByte) {
    EXPECT_EQ(answerOf({std::string("a\0b{ready}", 10), "c\n{ready}\n"}), "ac\n{ready}\n");
}

TEST(RequestProtocol, JoinsAMarkerAcrossACutChunk) {
    EXPECT_EQ(answerOf({std::string("{rea\0xx", 7), "dy}"}), "{ready}");
}

TEST(RequestProtocol, TurnsCarriageReturnLineFeedIntoLineFeed) {
    EXPECT_EQ(answerOf({"Make: Canon\r\n\r\r{ready}\r\n"}), "Make: Canon\n{ready}\n");
}

TEST(RequestProtocol, DoesNotSeeAMarkerWithACarriageReturnInIt) {
    EXPECT_EQ(answerOf({"a{rea\rdy}", "b{ready}"}), "a{ready}b{ready}");
}

// A long answer is then moved seldom.
TEST(RequestProtocol, MakesAnAnswersRoomFourTimesAsLarge) {
    ScriptedChannel channel({std::string(1000, 'x') + "{ready}"});
    EXPECT_GE(readAnswer(channel).capacity(), 4U * 511U);
}

TEST(RequestProtocol, CutsAMarkerBehindABlank) {
    EXPECT_EQ(answerOf({"12 bytes {ready}"}), "12 bytes");
    EXPECT_EQ(answerOf({" {ready}"}), "");
}

TEST(RequestProtocol, KeepsAMarkerOnALineOfItsOwn) {
    EXPECT_EQ(answerOf({"12 bytes\n{ready}\n"}), "12 bytes\n{ready}\n");
    EXPECT_EQ(answerOf({"12 bytes {ready}\n"}), "12 bytes {ready}\n");
    EXPECT_EQ(answerOf({"{ready}"}), "{ready}");
}

TEST(RequestProtocol, ReturnsWhatABrokenChannelHadToSay) {
    EXPECT_EQ(answerOf({"half an ans\r"}), "half an ans");
    EXPECT_EQ(answerOf(std::vector<std::string>{}), "");
}

TEST(RequestProtocol, TrimsAlsoAnAnswerThatBrokeOffBehindABlankAndMarker) {
    EXPECT_EQ(answerOf({"a\r {read\ry}"}), "a");
}

// A channel with one long text, of which each read takes as much as it may.
class LongChannel final : public ToolChannel {
public:
    explicit LongChannel(std::string_view text) : rest(text) {}

    std::string_view rest;

    void write(std::string_view) override {}
    std::size_t read(std::span<char> buffer) override {
        const std::size_t count = rest.copy(buffer.data(), buffer.size());
        rest.remove_prefix(count);
        return count;
    }
    exiv2_wp::internal::ErrorCode countActiveProcesses(std::uint32_t&) override { return 0; }
    void close() override {}
};

// An answer of this many mebibytes, in lines of one kibibyte.
std::string longAnswer(int mebibytes) {
    const std::string start = "Comment: ";
    const std::string line = start + std::string(1024 - start.size() - 1, 'x') + "\n";
    std::string text;
    for (int i = 0; i < mebibytes * 1024; ++i) {
        text += line;
    }
    return text + "{ready}\n";
}

// A reader that searched the whole answer after each of its 65,665 chunks would look at a terabyte:
// it would not end within the time that a test program has. The benchmarks measure the growth.
TEST(RequestProtocol, ReadsA32MegabyteAnswerWhole) {
    const std::string whole = longAnswer(32);
    LongChannel channel(whole);

    // The last chunk brings the line feed too, or leaves it to the next answer.
    const std::string answer = answerOf(channel);
    EXPECT_EQ(answer.size() + channel.rest.size(), whole.size());
    EXPECT_TRUE(whole.starts_with(answer));
}

TEST(RequestProtocol, AgreesWithTheLiteralRuleOnRandomStreams) {
    std::mt19937 random(511);
    const std::vector<std::string> pieces = {"{ready}", "{re",  "ady}", " ", "\r",  "\n",
                                             "a",       "\r\n", "}",    "{", "text"};
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::string> chunks(random() % 6);
        for (std::string& chunk : chunks) {
            for (std::size_t i = 0; i <= random() % 8; ++i) {
                chunk +=
                    random() % 9 == 0 ? std::string(1, '\0') : pieces[random() % pieces.size()];
            }
            if (random() % 8 == 0) {
                chunk.append(random() % 1100, 'y');
            }
        }
        ScriptedChannel fast(chunks);
        ScriptedChannel literal(chunks);
        for (int answer = 0; answer < 4; ++answer) {
            ASSERT_EQ(answerOf(fast), literalAnswerOf(literal)) << "round " << round;
        }
    }
}

}  // namespace
}  // namespace exiftool::internal
