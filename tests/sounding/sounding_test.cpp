// Which parts are one sounding, and which of its copies counts.
#include "SoundingParts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using corvane::Reading;
using corvane::Sounding;
using corvane::SoundingLevel;
using sounding_test::decoded;
using sounding_test::PartReading;
using sounding_test::soundingsOf;

// Bethel, Alaska, 13 July 2022, 00 UTC; shortened.
const std::string BETHEL_A = "TTAA 63001 70219 99000 20256 08510 00038 20256 06505 92703 13007 03007 85409 08610 02512 "
                             "88270 48957 36016 77999";
const std::string BETHEL_B = "TTBB 63008 70219 00000 20256 11950 15022 22908 11801 21212 00000 08510 11998 02504 "
                             "31313 42408 82301";
const std::string BETHEL_C = "TTCC 63001 70219 70887 49385 03513 50107 48386 03014 88999 77999";
const std::string BETHEL_D = "TTDD 6300/ 70219 11932 48785 22814 50584 21212 11925 35018 22773 02016";
// The same part A with another surface temperature, and with a third one.
const std::string BETHEL_A_CHANGED = "TTAA 63001 70219 99000 20456 08510 00038 20456 06505 92703 13007 03007 85409 "
                                     "08610 02512 88270 48957 36016 77999";
const std::string BETHEL_A_CHANGED_AGAIN = "TTAA 63001 70219 99000 20656 08510 00038 20656 06505 92703 13007 03007 "
                                           "85409 08610 02512 88270 48957 36016 77999";

// Hurricane Maria, 20 September 2017: a drop over the sea at 15.3 N 65.9 W, and two others made from it.
const std::string DROP_A =
    "XXAA 70035 99153 70659 04355 99007 29456 28521 00067 28856 28523 92755 22217 30027 88999 77999";
const std::string DROP_B =
    "XXBB 70038 99153 70659 04355 00007 29456 11911 21010 22850 19027 21212 00007 28521 11998 28524";
const std::string OTHER_DROP_A =
    "XXAA 70035 99153 70659 04355 99006 29256 28030 00059 28656 28032 92747 22017 29537 88999 77999";
const std::string OTHER_DROP_B =
    "XXBB 70038 99153 70659 04355 00006 29256 11905 20810 22850 18827 21212 00006 28030 11998 28034";
const std::string DROP_ELSEWHERE_B =
    "XXBB 70038 99154 70659 04355 00007 29456 11911 21010 22850 19027 21212 00007 28521 11998 28524";

std::string lettersOf(const std::vector<Sounding>& soundings) {
    std::string letters;
    for (const Sounding& sounding : soundings) {
        letters += letters.empty() ? "" : " ";
        letters += sounding.letters;
    }
    return letters;
}

// The temperature at the surface, by which copies of a part A are told apart here.
double surfaceTemperature(const Sounding& sounding) {
    return sounding.levels.empty() ? SoundingLevel::NOT_GIVEN : sounding.levels.front().temperature;
}

TEST(Soundings, NoPartsAreNoSoundings) {
    EXPECT_TRUE(soundingsOf({}).empty());
}

TEST(Soundings, PartsOfOneStationDayAndHourAreOneSoundingInAnyOrder) {
    std::vector<PartReading> parts{decoded(BETHEL_A), decoded(BETHEL_B), decoded(BETHEL_C), decoded(BETHEL_D)};
    const auto byLetter = [](const PartReading& one, const PartReading& other) {
        return one.reading.letter < other.reading.letter;
    };
    int orders = 0;
    do {
        const std::vector<Sounding> soundings = soundingsOf(parts);
        ASSERT_EQ(soundings.size(), 1U);
        const Sounding& sounding = soundings.front();
        EXPECT_EQ(sounding.letters, "ABCD");
        EXPECT_EQ(sounding.form, Corvane::WMO_TEMP);
        EXPECT_EQ(sounding.station, "70219");
        EXPECT_EQ(sounding.day, 13);
        EXPECT_EQ(sounding.hour, 0);
        EXPECT_EQ(sounding.launch, "2301");
        EXPECT_EQ(sounding.replaced, 0U);
        EXPECT_FALSE(sounding.latitude.has_value());
        ASSERT_EQ(sounding.parts.size(), 4U);
        EXPECT_EQ(sounding.parts[0].letter, 'A');
        EXPECT_EQ(sounding.parts[3].letter, 'D');
        std::vector<double> pressures;
        for (const SoundingLevel& level : sounding.levels) {
            pressures.push_back(level.pressure);
        }
        EXPECT_EQ(pressures, (std::vector<double>{1000, 998, 950, 925, 908, 850, 270, 93.2, 92.5, 81.4, 77.3, 70, 50}));
        ++orders;
    } while (std::next_permutation(parts.begin(), parts.end(), byLetter));
    EXPECT_EQ(orders, 24);
}

TEST(Soundings, OtherStationDayHourOrFormIsAnotherSounding) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_A), decoded("TTBB 63008 70200 00000 20256 11950 15022"),
         decoded("TTBB 64008 70219 00000 20256 11950 15022"), decoded("TTBB 63128 70219 00000 20256 11950 15022"),
         decoded("UUBB 70219 63008 99608 71618 23308 00000 20256 11950 15022")});
    EXPECT_EQ(lettersOf(soundings), "A B B B B");
    EXPECT_EQ(soundings[1].station, "70200");
    EXPECT_EQ(soundings[2].day, 14);
    EXPECT_EQ(soundings[3].hour, 12);
    EXPECT_EQ(soundings[4].form, Corvane::WMO_TEMP_SHIP);
}

TEST(Soundings, ComeInTheOrderOfTheirFirstParts) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_D), decoded("TTBB 63008 70200 00000 20256 11950 15022"), decoded(BETHEL_A), decoded(DROP_A)});
    EXPECT_EQ(lettersOf(soundings), "AD B A");
    EXPECT_EQ(soundings.front().station, "70219");
}

TEST(Soundings, OneByOneAndAllAtOnceAreTheSame) {
    corvane::Soundings collected;
    for (const std::string& text : {BETHEL_A, DROP_A, BETHEL_B}) {
        const PartReading part = decoded(text);
        collected.add(part.part, part.reading);
    }
    std::vector<std::string> letters;
    collected.forEach([&](const Sounding& sounding) { letters.push_back(sounding.letters); });
    EXPECT_EQ(letters, (std::vector<std::string>{"AB", "A"}));
    EXPECT_EQ(collected.soundings().size(), 2U);
}

TEST(Soundings, PartsThatAreNotDecodedAddNothing) {
    EXPECT_TRUE(soundingsOf({decoded(BETHEL_A).status(Reading::REFUSED), decoded(BETHEL_B).status(Reading::NIL),
                             decoded(BETHEL_C).status(Reading::EMPTY), decoded(DROP_A).status(Reading::REFUSED)})
                    .empty());
}

TEST(Soundings, PartsWithoutADateAddNothing) {
    PartReading withoutDay = decoded(BETHEL_A);
    withoutDay.reading.day.reset();
    PartReading withoutHour = decoded(BETHEL_B);
    withoutHour.reading.hour.reset();
    EXPECT_TRUE(soundingsOf({withoutDay, withoutHour}).empty());
}

TEST(Soundings, KeepWhereEachPartStands) {
    PartReading part = decoded(BETHEL_B).heading("USAK50 KWBC 130000 RRA").line(17);
    part.part.offset = 432;
    part.reading.mends = {{"closer", "77999 written", false, {4, 0}}};
    part.reading.doubts = {{"lapse-rate", "too steep"}};
    const std::vector<Sounding> soundings = soundingsOf({part});
    ASSERT_EQ(soundings.size(), 1U);
    ASSERT_EQ(soundings[0].parts.size(), 1U);
    const corvane::SoundingPart& kept = soundings[0].parts[0];
    EXPECT_EQ(kept.source, "bulletins.txt");
    EXPECT_EQ(kept.line, 17U);
    EXPECT_EQ(kept.offset, 432U);
    EXPECT_EQ(kept.heading, "USAK50 KWBC 130000 RRA");
    ASSERT_EQ(kept.mends.size(), 1U);
    EXPECT_EQ(kept.mends[0].name, "closer");
    ASSERT_EQ(kept.doubts.size(), 1U);
    EXPECT_EQ(kept.doubts[0].name, "lapse-rate");
}

// ---- position ------------------------------------------------------------------------------------------------------

TEST(Soundings, ShipIsKnownByItsCallSignWhereverItIs) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded("UUAA 9ZT9MRK 63001 99241 70830 07048 99014 32259 11504 88999 77999"),
                     decoded("UUBB 9ZT9MRK 63008 99242 70830 07048 00014 32259 11950 15022")});
    EXPECT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].station, "9ZT9MRK");
    EXPECT_EQ(soundings[0].latitude, 24.1);
    EXPECT_EQ(soundings[0].longitude, -83.0);
}

TEST(Soundings, ShipsWithoutACallSignAreToldApartByPosition) {
    EXPECT_EQ(lettersOf(soundingsOf({decoded("UUAA SHIP 63001 99241 70830 07048 99014 32259 11504 88999 77999"),
                                     decoded("UUAA SHIP 63001 99505 70305 07048 99020 12259 11504 88999 77999"),
                                     decoded("UUBB SHIP 63008 99241 70830 07048 00014 32259 11950 15022")})),
              "AB A");
    EXPECT_EQ(
        lettersOf(soundingsOf({decoded("IIAA MOBIL 63001 99241 70830 07048 01235 99014 32259 11504 88999 77999"),
                               decoded("IIAA MOBIL 63001 99505 70305 07048 01235 99020 12259 11504 88999 77999")})),
        "A A");
}

TEST(Soundings, PositionAndElevationAreThoseOfTheFirstPartThatGivesThem) {
    const std::string partA = "IIAA WEBR5 63001 99241 70830 07048 01231 99014 32259 11504 88999 77999";
    const std::string partB = "IIBB WEBR5 63008 99242 70831 07048 01241 00014 32259 11950 15022";
    const auto withElevation = [](const std::string& text, std::optional<double> elevation) {
        PartReading part = decoded(text);
        part.reading.elevation = elevation;
        return part;
    };
    std::vector<Sounding> soundings = soundingsOf({withElevation(partB, 124.0), withElevation(partA, 123.0)});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].elevation, 123.0);
    EXPECT_EQ(soundings[0].latitude, 24.1);
    EXPECT_EQ(soundings[0].longitude, -83.0);

    PartReading unknown = withElevation(partA, std::nullopt);
    unknown.reading.latitude.reset();
    unknown.reading.longitude.reset();
    soundings = soundingsOf({withElevation(partB, 124.0), unknown});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].elevation, 124.0);
    EXPECT_EQ(soundings[0].latitude, 24.2);
    EXPECT_EQ(soundings[0].longitude, -83.1);
}

// ---- copies --------------------------------------------------------------------------------------------------------

TEST(Soundings, IdenticalRepeatCountsOnce) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_A).line(1), decoded(BETHEL_B), decoded(BETHEL_A).line(90).heading("USAK50 KWBC 130000 RRB")});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 0U);
    EXPECT_EQ(soundings[0].parts[0].line, 1U);
}

TEST(Soundings, CopiesWithOtherGroupsOfTheSameCharactersAreDifferent) {
    PartReading one = decoded(BETHEL_A);
    one.reading.groups = {"TTAA", "12", "345"};
    PartReading other = decoded(BETHEL_A);
    other.reading.groups = {"TTAA", "123", "45"};
    const std::vector<Sounding> soundings = soundingsOf({one, other});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(soundings[0].replaced, 1U);
}

TEST(Soundings, LaterOfDifferentCopiesPrevails) {
    const std::vector<Sounding> soundings = soundingsOf({decoded(BETHEL_A), decoded(BETHEL_A_CHANGED).line(90)});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.4);
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].parts[0].line, 90U);
}

TEST(Soundings, RepeatOfAReplacedCopyChangesNothing) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(BETHEL_A), decoded(BETHEL_A_CHANGED), decoded(BETHEL_A), decoded(BETHEL_A_CHANGED)});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.4);
    EXPECT_EQ(soundings[0].replaced, 1U);
}

TEST(Soundings, ReplacedCopiesOfAllPartsAreCounted) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(BETHEL_A), decoded(BETHEL_A_CHANGED), decoded(BETHEL_A_CHANGED_AGAIN), decoded(BETHEL_B),
                     decoded("TTBB 63008 70219 00000 20456 11950 15022")});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 3U);
}

TEST(Soundings, CorrectionReplacesWhatItCorrectsWhicheverComesFirst) {
    const std::vector<std::pair<std::string, std::string>> higherAndLower{
        {"USAK50 KWBC 130000 COR", "USAK50 KWBC 130000"},         {"USAK50 KWBC 130000 CCA", "USAK50 KWBC 130000"},
        {"USAK50 KWBC 130000 CCA", "USAK50 KWBC 130000 RRA"},     {"USAK50 KWBC 130000 CCA", "USAK50 KWBC 130000 COR"},
        {"USAK50 KWBC 130000 CCB", "USAK50 KWBC 130000 CCA"},     {"USAK50 KWBC 130000 CCX", "USAK50 KWBC 130000 CCB"},
        {"USAK50 KWBC 130000 RRA CCA", "USAK50 KWBC 130000 COR"}, {"USAK50 KWBC 130000 COR", ""},
        {"USAK50 KWBC 130000 CCB COR", "USAK50 KWBC 130000 CCA"},
    };
    for (const auto& [higher, lower] : higherAndLower) {
        const PartReading correction = decoded(BETHEL_A).heading(higher);
        const PartReading corrected = decoded(BETHEL_A_CHANGED).heading(lower);
        for (const std::vector<PartReading>& parts :
             {std::vector<PartReading>{correction, corrected}, std::vector<PartReading>{corrected, correction}}) {
            const std::vector<Sounding> soundings = soundingsOf(parts);
            ASSERT_EQ(lettersOf(soundings), "A") << higher << " and " << lower;
            EXPECT_EQ(surfaceTemperature(soundings[0]), 20.2) << higher << " and " << lower;
            EXPECT_EQ(soundings[0].replaced, 1U);
        }
    }
}

TEST(Soundings, DelayAndAmendmentAreNotCorrections) {
    for (const std::string bbb : {"RRA", "AAA", "PAA", "AMD", "RTD", "CC", "CCAB"}) {
        const std::vector<Sounding> soundings = soundingsOf({decoded(BETHEL_A).heading("USAK50 KWBC 130000 " + bbb),
                                                             decoded(BETHEL_A_CHANGED).heading("USAK50 KWBC 130000")});
        ASSERT_EQ(lettersOf(soundings), "A");
        EXPECT_EQ(surfaceTemperature(soundings[0]), 20.4) << bbb;
    }
}

TEST(Soundings, CorrectionIndicatorCountsOnlyAfterTheThreeGroupsOfTheHeading) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_A).heading("COR CCA CCB"), decoded(BETHEL_A_CHANGED).heading("USAK50 KWBC 130000")});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.4);
}

TEST(Soundings, LaterOfTwoCorrectionsOfOneRankPrevails) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(BETHEL_A_CHANGED).heading("USAK50 KWBC 130000 CCA"),
                     decoded(BETHEL_A).heading("USAK50 KWBC 130000 CCA"), decoded(BETHEL_A_CHANGED_AGAIN)});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.2);
    EXPECT_EQ(soundings[0].replaced, 2U);
}

TEST(Soundings, CorrectionBackToAnEarlierContentPrevails) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(BETHEL_A), decoded(BETHEL_A_CHANGED).heading("USAK50 KWBC 130000 CCA"),
                     decoded(BETHEL_A).heading("USAK50 KWBC 130000 CCB")});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.2);
    EXPECT_EQ(soundings[0].replaced, 1U);
}

TEST(Soundings, CorrectionThatRepeatsTheTextKeepsItsRank) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_A), decoded(BETHEL_A).heading("USAK50 KWBC 130000 CCA"), decoded(BETHEL_A_CHANGED)});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.2);
}

TEST(Soundings, CorrectionThatIsNotDecodedReplacesNothing) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_A), decoded(BETHEL_A_CHANGED).heading("USAK50 KWBC 130000 CCA").status(Reading::REFUSED)});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(surfaceTemperature(soundings[0]), 20.2);
    EXPECT_EQ(soundings[0].replaced, 0U);
}

TEST(Soundings, CorrectionOfOnePartLeavesTheOthers) {
    const std::vector<Sounding> soundings = soundingsOf(
        {decoded(BETHEL_A), decoded(BETHEL_B), decoded(BETHEL_A_CHANGED).heading("USAK50 KWBC 130000 CCA")});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].parts[1].heading, "");
}

// ---- drops ---------------------------------------------------------------------------------------------------------

TEST(Drops, PartBelongsToThePartABeforeItInItsBulletin) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(1), decoded(OTHER_DROP_A).bulletin(2),
                     decoded(OTHER_DROP_B).bulletin(2)});
    ASSERT_EQ(lettersOf(soundings), "AB AB");
    EXPECT_EQ(soundings[0].latitude, 15.3);
    EXPECT_EQ(soundings[0].longitude, -65.9);
    EXPECT_EQ(soundings[0].station, "");
    EXPECT_EQ(soundings[0].form, Corvane::WMO_TEMP_DROP);
    EXPECT_EQ(soundings[0].levels.front().pressure, 1007);
    EXPECT_EQ(soundings[1].levels.front().pressure, 1006);
    EXPECT_EQ(soundings[0].levels.back().pressure, 850);
    EXPECT_EQ(soundings[0].levels.back().temperature, 19.0);
    EXPECT_EQ(soundings[1].levels.back().temperature, 18.8);
    EXPECT_EQ(soundings[0].replaced + soundings[1].replaced, 0U);
}

TEST(Drops, SecondPartAInABulletinIsAnotherDropAndTakesWhatFollows) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A), decoded(DROP_B), decoded(OTHER_DROP_A), decoded(OTHER_DROP_B)});
    ASSERT_EQ(lettersOf(soundings), "AB AB");
    EXPECT_EQ(soundings[1].levels.back().temperature, 18.8);
}

TEST(Drops, BulletinsOfTwoSourcesAreTwoBulletins) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1, "one.txt"), decoded(OTHER_DROP_A).bulletin(1, "two.txt"),
                     decoded(DROP_B).bulletin(1, "one.txt")});
    ASSERT_EQ(lettersOf(soundings), "AB A");
    EXPECT_EQ(soundings[0].levels.front().pressure, 1007);
}

TEST(Drops, RepeatOfBothPartsCountsOnce) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(1), decoded(OTHER_DROP_A).bulletin(2),
                     decoded(OTHER_DROP_B).bulletin(2), decoded(DROP_A).bulletin(3), decoded(DROP_B).bulletin(3)});
    ASSERT_EQ(lettersOf(soundings), "AB AB");
    EXPECT_EQ(soundings[0].replaced + soundings[1].replaced, 0U);
}

TEST(Drops, OtherPositionIsAnotherDropEvenInTheSameBulletin) {
    EXPECT_EQ(lettersOf(soundingsOf({decoded(DROP_A), decoded(DROP_ELSEWHERE_B)})), "A B");
}

TEST(Drops, LatitudeAndLongitudeBothCount) {
    std::string elsewhere = DROP_B;
    elsewhere.replace(elsewhere.find("70659"), 5, "70658");
    EXPECT_EQ(lettersOf(soundingsOf({decoded(DROP_A), decoded(elsewhere)})), "A B");
}

TEST(Drops, PartFarFromItsPartABelongsToTheOnlyDrop) {
    for (const bool partAFirst : {true, false}) {
        std::vector<PartReading> parts{decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(2)};
        if (!partAFirst) {
            std::swap(parts[0], parts[1]);
        }
        const std::vector<Sounding> soundings = soundingsOf(parts);
        ASSERT_EQ(lettersOf(soundings), "AB");
        EXPECT_EQ(soundings[0].replaced, 0U);
    }
}

TEST(Drops, PartWithoutPartAIsASoundingOfItsOwnWhereSeveralDropsArePossible) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(2), decoded(OTHER_DROP_A).bulletin(3)});
    EXPECT_EQ(lettersOf(soundings), "A B A");
}

TEST(Drops, LoosePartAndThePartOfTheDropAreCopies) {
    const PartReading repeat = decoded(DROP_B).bulletin(2);
    std::vector<Sounding> soundings = soundingsOf({decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(1), repeat});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 0U);

    const PartReading other = decoded(OTHER_DROP_B).bulletin(2);
    soundings = soundingsOf({decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(1), other});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].parts[1].source, "bulletins.txt");
    EXPECT_EQ(soundings[0].levels.back().temperature, 18.8);

    soundings = soundingsOf({other, decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(1)});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].levels.back().temperature, 19.0);
}

TEST(Drops, CorrectionOfALoosePartPrevails) {
    const PartReading correction = decoded(OTHER_DROP_B).bulletin(1).heading("UZNT13 KNHC 200250 CCA");
    const std::vector<Sounding> soundings =
        soundingsOf({correction, decoded(DROP_A).bulletin(2), decoded(DROP_B).bulletin(2)});
    ASSERT_EQ(lettersOf(soundings), "AB");
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].levels.back().temperature, 18.8);
}

TEST(Drops, PartAfterARefusedPartADoesNotGoToAnotherDrop) {
    const PartReading refused = decoded(OTHER_DROP_A).bulletin(2).status(Reading::REFUSED);
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1), decoded(DROP_B).bulletin(1), refused,
                     decoded(OTHER_DROP_B).bulletin(2), refused, decoded(OTHER_DROP_B).bulletin(2)});
    ASSERT_EQ(lettersOf(soundings), "AB B");
    EXPECT_EQ(soundings[0].levels.back().temperature, 19.0);
    EXPECT_EQ(soundings[1].levels.back().temperature, 18.8);
    EXPECT_EQ(soundings[0].replaced + soundings[1].replaced, 0U);
}

TEST(Drops, PartsAfterEmptyPartsAOfTwoBulletinsAreTwoDrops) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1).status(Reading::EMPTY), decoded(DROP_B).bulletin(1),
                     decoded(OTHER_DROP_A).bulletin(2).status(Reading::EMPTY), decoded(OTHER_DROP_B).bulletin(2)});
    EXPECT_EQ(lettersOf(soundings), "B B");
}

TEST(Drops, LoosePartIsKeptWhereTheOnlyPartAIsRefused) {
    EXPECT_EQ(
        lettersOf(soundingsOf({decoded(DROP_A).bulletin(1).status(Reading::REFUSED), decoded(DROP_B).bulletin(2)})),
        "B");
}

TEST(Drops, ComeInTheOrderOfTheirFirstPartsLooseOnesToo) {
    EXPECT_EQ(lettersOf(soundingsOf({decoded(DROP_B).bulletin(1), decoded(BETHEL_C), decoded(DROP_A).bulletin(2)})),
              "AB C");
}

TEST(Drops, LaterBulletinWithAReadablePartAIsADropOfItsOwn) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(OTHER_DROP_A).bulletin(1).status(Reading::REFUSED), decoded(OTHER_DROP_B).bulletin(1),
                     decoded(DROP_A).bulletin(2), decoded(DROP_B).bulletin(2)});
    EXPECT_EQ(lettersOf(soundings), "B AB");
}

TEST(Drops, CorrectionReplacesTheDropOfTheSameHeadingWhicheverComesFirst) {
    const std::string heading = "UZNT13 KNHC 200250";
    const PartReading a = decoded(DROP_A).bulletin(1).heading(heading);
    const PartReading b = decoded(DROP_B).bulletin(1).heading(heading);
    const PartReading correctedA = decoded(OTHER_DROP_A).bulletin(2).heading(heading + " CCA");
    const PartReading correctedB = decoded(OTHER_DROP_B).bulletin(2).heading(heading + " CCA");
    for (const std::vector<PartReading>& parts : {std::vector<PartReading>{a, b, correctedA, correctedB},
                                                  std::vector<PartReading>{correctedA, correctedB, a, b}}) {
        const std::vector<Sounding> soundings = soundingsOf(parts);
        ASSERT_EQ(lettersOf(soundings), "AB");
        EXPECT_EQ(soundings[0].replaced, 2U);
        EXPECT_EQ(soundings[0].levels.front().pressure, 1006);
        EXPECT_EQ(soundings[0].levels.back().temperature, 18.8);
    }
}

TEST(Drops, CorrectionReplacesTheDropOfItsHeadingAndNoOther) {
    const std::string corrected = "XXAA 70035 99153 70659 04355 99005 29056 28030 00052 28656 28032 88999 77999";
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1).heading("UZNT13 KNHC 200250"),
                     decoded(OTHER_DROP_A).bulletin(2).heading("UZNT13 KNHC 200255"),
                     decoded(corrected).bulletin(3).heading("UZNT13 KNHC 200255 CCA")});
    ASSERT_EQ(lettersOf(soundings), "A A");
    EXPECT_EQ(soundings[0].levels.front().pressure, 1007);
    EXPECT_EQ(soundings[1].levels.front().pressure, 1005);
}

TEST(Drops, CorrectionUnderAnotherHeadingReplacesTheOnlyDrop) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1).heading("UZNT13 KNHC 200250"),
                     decoded(OTHER_DROP_A).bulletin(2).heading("UZNT13 KNHC 200305 COR")});
    ASSERT_EQ(lettersOf(soundings), "A");
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].levels.front().pressure, 1006);
}

TEST(Drops, CorrectionThatMayMeanSeveralDropsIsADropOfItsOwn) {
    const std::string other = "XXAA 70035 99153 70659 04355 99005 29056 28030 00052 28656 28032 88999 77999";
    EXPECT_EQ(lettersOf(soundingsOf({decoded(DROP_A).bulletin(1).heading("UZNT13 KNHC 200250"),
                                     decoded(OTHER_DROP_A).bulletin(2).heading("UZNT13 KNHC 200250"),
                                     decoded(other).bulletin(3).heading("UZNT13 KNHC 200250 CCA")})),
              "A A A");
    EXPECT_EQ(lettersOf(soundingsOf({decoded(DROP_A).bulletin(1).heading("UZNT13 KNHC 200250"),
                                     decoded(OTHER_DROP_A).bulletin(2).heading("UZNT13 KNHC 200255"),
                                     decoded(other).bulletin(3).heading("UZNT13 KNHC 200300 CCA")})),
              "A A A");
}

TEST(Drops, PartOfACorrectionBelongsToTheCorrectedDrop) {
    const std::vector<Sounding> soundings =
        soundingsOf({decoded(DROP_A).bulletin(1).heading("UZNT13 KNHC 200250"),
                     decoded(DROP_B).bulletin(1).heading("UZNT13 KNHC 200250"),
                     decoded(OTHER_DROP_A).bulletin(2).heading("UZNT13 KNHC 200305"),
                     decoded(DROP_A).bulletin(3).heading("UZNT13 KNHC 200250 CCA"),
                     decoded(OTHER_DROP_B).bulletin(3).heading("UZNT13 KNHC 200250 CCA")});
    ASSERT_EQ(lettersOf(soundings), "AB A");
    EXPECT_EQ(soundings[0].replaced, 1U);
    EXPECT_EQ(soundings[0].levels.back().temperature, 18.8);
}

// ---- names ---------------------------------------------------------------------------------------------------------

TEST(KindNames, AreSeparatedByASpace) {
    EXPECT_EQ(corvane::kindNames(0), "");
    EXPECT_EQ(corvane::kindNames(SoundingLevel::SURFACE), "surface");
    EXPECT_EQ(corvane::kindNames(31), "surface mandatory significant tropopause maxwind");
    EXPECT_EQ(corvane::kindNames(SoundingLevel::MAXWIND | SoundingLevel::MANDATORY), "mandatory maxwind");
}

}  // namespace
