// The remarks of a dropsonde after 62626.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using corvane::Reading;
using feed_test::DROP_A;
using feed_test::givenOf;
using feed_test::Lines;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::rowsOf;

const std::string REMARKS = DROP_A + " 62626";

// The rows after those of the levels.
Lines remarksOf(const std::string& remarks) {
    const Lines rows = rowsOf(REMARKS + ' ' + remarks);
    return {rows.begin() + static_cast<std::ptrdiff_t>(std::min(feed_test::LEVELS_OF_DROP, rows.size())), rows.end()};
}

Lines mendsOfRemarks(const std::string& remarks) {
    return mendsOf(REMARKS + ' ' + remarks);
}

TEST(Remarks, ARealPartHasThemAll) {
    const Reading reading =
        readOnly(REMARKS + " MBL WND 29023 AEV 33304 DLM WND 29525 007410 WL150 28523 080 REL 1532N06587W "
                           "023155 SPG 1529N06581W 024152");
    EXPECT_TRUE(reading.mends.empty());
    const Lines rows = rowsOf(reading);
    // Knots: 23 * 0.5144, 25 * 0.5144.
    EXPECT_EQ(Lines(rows.begin() + 6, rows.end()),
              (Lines{"150mlayerwind,,,,11.8312,285,80,,,,", "deeplayerwind,1007,,,12.86,295,,,,,410",
                     "meanblwind,,,,11.8312,290,,,,,", "releasepoint,,,,,,,23155,15.32,-65.87,",
                     "splashpointrawgps,,,,,,,24152,15.29,-65.81,"}));
    // The level knows its groups, the keyword first.
    const corvane::ReadLevel& release = reading.levels[9];
    EXPECT_EQ(release.values.name(), "releasepoint");
    EXPECT_EQ(release.groups.count, 3U);
    EXPECT_EQ(reading.groups[release.groups.first + 1], "REL");
    EXPECT_EQ(reading.levels[7].groups.count, 4U);
    EXPECT_EQ(reading.levels[8].groups.count, 3U);
}

TEST(Remarks, LastWindAndSplashPoint) {
    EXPECT_EQ(remarksOf("SPL 1529N06581E 0241 LST WND 013"),
              (Lines{"lastwindheight,,,,,,13,,,,", "splashpointwindinteg,,,,,,,241,15.29,65.81,"}));
    EXPECT_EQ(remarksOf("SPL 0000S00000W 0000"), Lines{"splashpointwindinteg,,,,,,,0,0,0,"});
}

TEST(Remarks, WL150AsTwoWords) {
    EXPECT_EQ(remarksOf("WL 150 28523 080"), Lines{"150mlayerwind,,,,11.8312,285,80,,,,"});
    EXPECT_EQ(mendsOfRemarks("WL 150 28523 080"), Lines());
    EXPECT_EQ(remarksOf("WL150 ///// 080"), Lines());
    EXPECT_EQ(mendsOfRemarks("WL150 ///// 080"), Lines());
}

TEST(Remarks, LineEndsInsideAValueAreJoined) {
    for (const std::string remark :
         {"REL 1532N0\n6587W 023155", "REL 1532N06587W 023\r\r\n155", "REL 1532N\n06587W 0231\n55"}) {
        EXPECT_EQ(remarksOf(remark), Lines{"releasepoint,,,,,,,23155,15.32,-65.87,"}) << remark;
        EXPECT_EQ(mendsOfRemarks(remark), Lines()) << remark;
    }
    EXPECT_EQ(remarksOf("WL1\n50 28523 080"), Lines());
    EXPECT_EQ(remarksOf("WL150 285\n23 080"), Lines{"150mlayerwind,,,,11.8312,285,80,,,,"});
    EXPECT_EQ(remarksOf("WL150 28523 08\n0"), Lines{"150mlayerwind,,,,11.8312,285,80,,,,"});
    EXPECT_EQ(remarksOf("DLM WND 295\n25 007\n410"), Lines{"deeplayerwind,1007,,,12.86,295,,,,,410"});
    const Reading reading = readOnly(REMARKS + " REL 1532N\n06587W 0231\n55");
    EXPECT_EQ(reading.levels.back().groups.count, 5U);
}

TEST(Remarks, AKeywordGluedToWhatFollowsIsLost) {
    EXPECT_EQ(mendsOfRemarks("DLMWND 27030 011200"), Lines{"lost remark: left out DLMWND before 27030 011200 ..."});
    EXPECT_EQ(mendsOfRemarks("WL15028033 084"), Lines{"lost remark: left out WL15028033 before 084 ..."});
    EXPECT_EQ(mendsOfRemarks("SPG2403N07602W 230512"), Lines{"lost remark: left out SPG2403N07602W before 230512 ..."});
    EXPECT_EQ(mendsOfRemarks("RELEASED SPLASH WLX"), Lines());
}

TEST(Remarks, ARemarkThatIsCutShortIsLost) {
    // NOAA 9, hurricane Danielle, 28 August 1998: SPL without a time
    EXPECT_EQ(mendsOfRemarks("SPL 2402N07602W"), Lines{"lost remark: left out SPL before 2402N07602W ..."});
    for (const std::string keyword : {"REL", "SPG", "SPL", "WL150", "DLM", "MBL", "LST", "AEV", "LAST", "EYEWALL"}) {
        const Reading reading = readOnly(REMARKS + " " + keyword);
        EXPECT_EQ(mendsOf(reading), Lines{"lost remark: left out " + keyword + " before ..."}) << keyword;
        EXPECT_EQ(reading.levels.size(), feed_test::LEVELS_OF_DROP) << keyword;
        EXPECT_TRUE(reading.lost());
    }
    EXPECT_EQ(mendsOfRemarks("WL"), Lines{"lost remark: left out WL before ..."});
    EXPECT_EQ(mendsOfRemarks("WL 15"), Lines{"lost remark: left out WL before 15 ..."});
}

TEST(Remarks, TheOthersAreKept) {
    EXPECT_EQ(remarksOf("MBL 29023 REL 1532N06587W 023155 SPG 1529N06581W"),
              Lines{"releasepoint,,,,,,,23155,15.32,-65.87,"});
    EXPECT_EQ(mendsOfRemarks("MBL 29023 REL 1532N06587W 023155 SPG 1529N06581W"),
              (Lines{"lost remark: left out MBL before 29023 REL 1532N06587W 023155 SPG 1529N06581W ...",
                     "lost remark: left out SPG before 1529N06581W ..."}));
}

TEST(Remarks, EyewallLastAndDropSonde) {
    EXPECT_EQ(mendsOfRemarks("EYEWALL 270 MBL WND 29023"), Lines());
    EXPECT_EQ(mendsOfRemarks("MBL WND 29023 EYEWALL"), Lines{"lost remark: left out EYEWALL before ..."});
    EXPECT_EQ(remarksOf("MBL WND 29023 EYEWALL"), Lines{"meanblwind,,,,11.8312,290,,,,,"});
    EXPECT_EQ(mendsOfRemarks("LAST REPORT"), Lines());
    EXPECT_EQ(mendsOfRemarks("LAST REP\nORT"), Lines());
    EXPECT_EQ(mendsOfRemarks("LAST RETORT OK"), Lines{"lost remark: left out LAST before RETORT OK ..."});
    EXPECT_EQ(mendsOfRemarks("AEV 333"), Lines{"lost remark: left out AEV before 333 ..."});
}

TEST(Remarks, AnEyewallWithoutABearingDoesNotTakeAKeyword) {
    const Reading reading = readOnly(REMARKS + " EYEWALL REL 2402N07602W 123456");
    EXPECT_EQ(mendsOf(reading), Lines{"lost remark: left out EYEWALL before REL 2402N07602W 123456 ..."});
    EXPECT_EQ(rowsOf(reading).back(), "releasepoint,,,,,,,123456,24.02,-76.02,");
}

TEST(Remarks, HalfAWindIsLost) {
    EXPECT_EQ(mendsOf(readOnly(REMARKS + " MBL WND //015")), Lines{"lost wind: //015 has no direction"});
    EXPECT_EQ(mendsOf(readOnly(REMARKS + " DLM WND 09/// 985845")), Lines{"lost wind: 09/// has no speed"});
    EXPECT_EQ(mendsOf(readOnly(REMARKS + " MBL WND 37///")), Lines{"lost remark: left out MBL before WND 37/// ..."});
}

TEST(Remarks, SPLWithSixDigitsIsLost) {
    EXPECT_EQ(mendsOfRemarks("SPL 1529N06581W 024152"),
              Lines{"lost remark: left out SPL before 1529N06581W 024152 ..."});
    EXPECT_EQ(mendsOfRemarks("REL 1532N06587W 0231"), Lines{"lost remark: left out REL before 1532N06587W 0231 ..."});
}

TEST(Remarks, ALayerWithoutPressuresIsLost) {
    EXPECT_EQ(mendsOfRemarks("DLM WND 09523 MBL WND 08023"),
              Lines{"lost remark: left out DLM before WND 09523 MBL WND 08023 ..."});
    EXPECT_EQ(remarksOf("DLM WND 09523 MBL WND 08023"), Lines{"meanblwind,,,,11.8312,80,,,,,"});
}

TEST(Remarks, AnythingButDigitsInAValueIsLost) {
    for (const std::string remark :
         {"REL 1532N06587W 02315X", "REL 1532N06587W 02/155", "REL 1532A06587W 023155", "REL 1532N06587X 023155",
          "REL 15.2N06587W 023155", "REL 9001N06587W 023155", "REL 1532N18001W 023155", "SPL 1529N06581W 02X1",
          "WL150 2852X 080", "WL150 28523 08X", "WL150 2852/ 080", "MBL WND 2902X", "MBL WND 290//",
          "DLM WND 29525 00741X", "DLM WND 29525 00////", "LST WND ///"}) {
        const Lines mends = mendsOfRemarks(remark);
        ASSERT_EQ(mends.size(), 1U) << remark;
        EXPECT_EQ(mends[0].substr(0, 22), "lost remark: left out ") << remark;
        EXPECT_EQ(remarksOf(remark), Lines()) << remark;
    }
    EXPECT_EQ(remarksOf("REL 9000N18000W 235959"), Lines{"releasepoint,,,,,,,235959,90,-180,"});
    EXPECT_EQ(remarksOf("MBL WND ///23"), Lines());
}

TEST(Remarks, AWindThatIsNotGivenIsNotAFault) {
    EXPECT_EQ(mendsOfRemarks("MBL WND /////"), Lines());
    EXPECT_EQ(mendsOfRemarks("DLM WND ///// 007410"), Lines());
    EXPECT_EQ(remarksOf("MBL WND 29///"), Lines());
    EXPECT_EQ(remarksOf("DLM WND //525 007410"), Lines());
}

TEST(Remarks, AnImpossibleValueLosesOnlyTheRemark) {
    EXPECT_EQ(mendsOfRemarks("MBL WND 37023 REL 1532N06587W 023155"),
              Lines{"lost remark: left out MBL before WND 37023 REL 1532N06587W 023155 ..."});
    EXPECT_EQ(remarksOf("MBL WND 37023 REL 1532N06587W 023155"), Lines{"releasepoint,,,,,,,23155,15.32,-65.87,"});
}

TEST(Remarks, TheFirstOfAKindIsFiled) {
    EXPECT_EQ(remarksOf("MBL WND 29023 MBL WND 18023"), Lines{"meanblwind,,,,11.8312,290,,,,,"});
    const Reading reading = readOnly(REMARKS + " MBL WND 29023 MBL WND 18023");
    EXPECT_EQ(reading.groups[reading.levels.back().groups.first + 1], "MBL");
    EXPECT_EQ(remarksOf("MBL WND 37023 MBL WND 18023"), Lines{"meanblwind,,,,11.8312,180,,,,,"});
}

TEST(Remarks, PlainWordsAreSkipped) {
    EXPECT_EQ(mendsOfRemarks("EYE CENTER RAINBAND MXWNDBND SPLX WL WND WLX 150 A 1 ABCDE="), Lines());
    EXPECT_EQ(rowsOf(DROP_A + " MBL WND 29023").size(), feed_test::LEVELS_OF_DROP);
}

// A line end inside a keyword. Words are not joined, so that the decoder takes both for plain words.
TEST(Remarks, AKeywordInTwoPiecesIsLost) {
    EXPECT_EQ(mendsOfRemarks("WL1\n50 28523 080"), Lines{"lost remark: left out WL1 before 50 28523 080 ..."});
    for (const std::string remark :
         {"RE L 1532N06587W 023155", "R EL 1532N06587W 023155", "SP G 1529N06581W 024152", "S PL 1529N06581W 0241",
          "W L150 28523 080", "WL15 0 28523 080", "W L 150 28523 080", "W L150 ///// 080", "D LM WND 29525 007410",
          "DL M WND 29525 007410", "M BL WND 29023", "LS T WND 012"}) {
        const Reading reading = readOnly(REMARKS + ' ' + remark + " MBL WND 29023");
        ASSERT_EQ(reading.mends.size(), 1U) << remark;
        EXPECT_EQ(reading.mends.front().text.substr(0, 9 + remark.find(' ')),
                  "left out " + remark.substr(0, remark.find(' ')));
        EXPECT_TRUE(reading.lost()) << remark;
        EXPECT_EQ(rowsOf(reading).size(), feed_test::LEVELS_OF_DROP + 1) << remark;
        EXPECT_EQ(readOnly(REMARKS + ' ' + remark, false).reason.substr(0, 53),
                  "A remark holds something other than its values. Error");
    }
    EXPECT_EQ(mendsOfRemarks("RE L CENTER SP G W L AT LS"), Lines());
}

TEST(Remarks, InPartsBAndD) {
    const std::string part =
        "XXBB 70038 99153 70659 04355 00007 29456 11911 21010 21212 00007 28521 31313 09608 80231 61616 OB "
        "03 62626 SPL 2402N07602W MBL WND 29023";
    EXPECT_EQ(mendsOf(part), Lines{"lost remark: left out SPL before 2402N07602W MBL WND 29023 ..."});
    EXPECT_EQ(rowsOf(part).back(), "meanblwind,,,,11.8312,290,,,,,");
}

TEST(Remarks, TwelveAtMost) {
    std::string remarks;
    for (int i = 0; i < 12; ++i) {
        remarks += " REL X";
    }
    EXPECT_EQ(readOnly(REMARKS + remarks).status, Reading::DECODED);
    EXPECT_EQ(readOnly(REMARKS + remarks).mends.size(), 12U);
    EXPECT_EQ(readOnly(REMARKS + remarks + " REL X").status, Reading::REFUSED);
}

}  // namespace
