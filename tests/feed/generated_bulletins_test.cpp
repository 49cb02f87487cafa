// What holds for real bulletins with faults put into them.
#include "../../fuzz/BulletinProperties.h"
#include "FeedParts.h"
#include "PartFaults.h"

#include "support/Samples.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

using corvane::Part;
using feed_test::Groups;

// The parts of all bulletins that the tests hold, and of the reports in tests/reports.
const std::vector<Part>& realParts() {
    static const std::vector<Part> PARTS = [] {
        std::vector<Part> parts;
        for (const std::string folder : {"tests/feed/bulletins", "tests/reports"}) {
            for (const std::filesystem::path& file : filesIn(folder)) {
                if (file.extension() == ".txt") {
                    for (const Part& part : feed_test::partsOf(contentOf(file))) {
                        parts.push_back(part);
                    }
                }
            }
        }
        return parts;
    }();
    return PARTS;
}

// A real part with up to three faults.
std::string anyFaultyPart() {
    const Part& part = *rc::gen::elementOf(realParts());
    Groups groups;
    for (const corvane::Group& group : part.groups) {
        groups.push_back(group.text);
    }
    const int count = *rc::gen::inRange(0, 4);
    for (int i = 0; i < count && groups.size() > 4; ++i) {
        const feed_test::Fault& fault =
            feed_test::faults()[*rc::gen::inRange<std::size_t>(0, feed_test::faults().size())];
        feed_test::Draw draw(*rc::gen::arbitrary<std::uint32_t>());
        const bool datePresent = groups[0].size() == 5 && groups[1].size() == 5;
        if (fault.onlyPartsAAndC && !datePresent) {
            continue;
        }
        groups = fault.make(draw, part.mmmm, groups).value_or(groups);
        groups.erase(std::remove(groups.begin(), groups.end(), ""), groups.end());
    }
    std::string text = part.mmmm;
    for (const std::string& group : groups) {
        text += ' ' + group;
    }
    return text;
}

std::string anyBulletins() {
    std::string text;
    const int count = *rc::gen::inRange(1, 6);
    for (int i = 0; i < count; ++i) {
        text += anyFaultyPart() +
                *rc::gen::element<std::string>("=", "=\r\r\n", "\n", " ", "\3\1", "\nUSUS50 KWBC 130000\n", "\nNNNN\n");
    }
    return text;
}

TEST(GeneratedBulletins, ThereAreRealParts) {
    EXPECT_GE(realParts().size(), 70U);
}

RC_GTEST_PROP(GeneratedBulletins, PartsAreInOrder, ()) {
    const std::string text = anyBulletins();
    RC_ASSERT(fuzz::partsAreInOrder(fuzz::partsOf(text), text.size()) == "");
}

RC_GTEST_PROP(GeneratedBulletins, AMendedPartNeedsNoMendAndPrintsTheSame, ()) {
    const Part part = fuzz::partsOf(anyFaultyPart()).front();
    RC_ASSERT(fuzz::printedPartReadsTheSame(corvane::read(part)) == "");
}

RC_GTEST_PROP(GeneratedBulletins, EveryNumberComesFromDigitsOfThePart, ()) {
    const Part part = fuzz::partsOf(anyFaultyPart()).front();
    const corvane::Reading reading = corvane::read(part);
    RC_ASSERT(fuzz::readingIsWhole(part, reading) == "");
    RC_ASSERT(fuzz::numbersComeFromDigits(part, reading) == "");
}

RC_GTEST_PROP(GeneratedBulletins, TheOrderOfPartsDoesNotChangeTheirRows, ()) {
    RC_ASSERT(fuzz::orderDoesNotMatter(fuzz::partsOf(anyBulletins())) == "");
}

RC_GTEST_PROP(GeneratedBulletins, AGroupSplitAtABlankGivesTheSameRows, ()) {
    const Part part = fuzz::partsOf(anyFaultyPart()).front();
    RC_PRE(!part.groups.empty());
    const std::size_t place = *rc::gen::inRange<std::size_t>(0, part.groups.size());
    RC_PRE(fuzz::maySplit(part, place));
    RC_ASSERT(fuzz::splitGroupReadsTheSame(part, place, *rc::gen::inRange<std::size_t>(1, 5)) == "");
}

// The properties themselves notice what they are for.
TEST(BulletinProperties, AnInventedNumberIsFound) {
    const Part part = fuzz::partsOf(feed_test::BEIJING).front();
    const corvane::Reading reading = corvane::read(part);
    EXPECT_EQ(fuzz::numbersComeFromDigits(part, reading), "");
    for (std::size_t i = 0; i < reading.levels.size(); ++i) {
        for (const auto& field : reading.levels[i].values.fields) {
            corvane::Reading other = reading;
            other.levels[i].values.fields[field.first] += 1.0;
            EXPECT_NE(fuzz::numbersComeFromDigits(part, other), "") << i << ' ' << field.first;
        }
    }
}

TEST(BulletinProperties, AChangedPrintIsFound) {
    corvane::Reading reading = corvane::read(fuzz::partsOf(feed_test::BEIJING).front());
    EXPECT_EQ(fuzz::printedPartReadsTheSame(reading), "");
    corvane::Reading other = reading;
    other.levels.pop_back();
    EXPECT_NE(fuzz::printedPartReadsTheSame(other), "");
    reading.groups[1] = "28232";
    EXPECT_NE(fuzz::printedPartReadsTheSame(reading), "");
}

TEST(BulletinProperties, ReadingsThatAreNotWholeAreFound) {
    const Part part = fuzz::partsOf(feed_test::BEIJING).front();
    const corvane::Reading reading = corvane::read(part);
    EXPECT_EQ(fuzz::readingIsWhole(part, reading), "");
    corvane::Reading refused = reading;
    refused.status = corvane::Reading::REFUSED;
    EXPECT_NE(fuzz::readingIsWhole(part, refused), "");
    refused.reason = "no reason";
    EXPECT_NE(fuzz::readingIsWhole(part, refused), "");
    corvane::Reading outside = reading;
    outside.levels.front().groups.first = 1000;
    EXPECT_NE(fuzz::readingIsWhole(part, outside), "");
    corvane::Reading nan = reading;
    nan.levels.front().values.fields[Corvane::LF_TDRY] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(fuzz::readingIsWhole(part, nan), "");
}

// Every fault is what its name says.
TEST(PartFaults, EachChangesThePart) {
    const Groups clean{"28231", "54511", "99015", "02257", "00000", "88999", "77999"};
    for (const feed_test::Fault& fault : feed_test::faults()) {
        feed_test::Draw draw(7);
        for (int i = 0; i < 20; ++i) {
            const std::optional<Groups> faulty = fault.make(draw, "TTAA", clean);
            ASSERT_TRUE(faulty.has_value()) << fault.name;
            EXPECT_NE(*faulty, clean) << fault.name;
        }
    }
    feed_test::Draw draw(7);
    EXPECT_EQ(feed_test::faults()[0].make(draw, "TTAA", clean)->size(), 6U);
    EXPECT_EQ(feed_test::faults()[2].make(draw, "TTAA", clean)->size(), 4U);
    EXPECT_EQ(feed_test::faults()[4].make(draw, "TTAA", clean)->size(), 8U);
    EXPECT_FALSE(feed_test::faults()[10].make(draw, "TTAA", {"28231", "54511"}).has_value());
}

}  // namespace
