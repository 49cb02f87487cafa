// The program corvane-skewt as a process: which sounding it draws, what it lists, its files, its table, exit statuses.
#include "support/Places.h"
#include "support/Samples.h"
#include "support/SvgReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Two soundings of one station, one of another, a drop, a part that says NIL.
const std::string BULLETINS = "USUS50 KWBC 130000\n"
                              "TTAA 63001 72403 99014 32259 11514 00140 30057 11500 92822 25656 11510 88999 77999=\n"
                              "TTAA 63121 72403 99012 22259 11504 00120 20057 11500 92802 15656 11510 88999 77999=\n"
                              "TTAA 63001 72572 99870 36683 08505 88999 77999=\n"
                              "TTAA 72576 NIL=\n"
                              "XXAA 63188 99153 70659 04355 99007 29456 28521 00067 28856 28523 88999 77999=\n";

struct Finished {
    int status = -1;
    std::string output;
    std::string errors;
};

class SkewTProgram : public testing::Test {
protected:
    SkewTProgram() : folder(fs::path(testing::TempDir()) / ("corvane-skewt-" + std::to_string(getpid()))) {
        fs::create_directories(folder);
        write("bulletins.txt", BULLETINS);
    }
    ~SkewTProgram() override { fs::remove_all(folder); }

    fs::path write(const std::string& name, const std::string& content) const {
        std::ofstream(folder / name, std::ios::binary) << content;
        return folder / name;
    }

    // Runs the program in the folder; the arguments are words of a shell.
    Finished run(const std::string& arguments) const {
        const std::string command =
            "cd '" + folder.string() + "' && '" + skewtPath() + "' " + arguments + " >.out 2>.err </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(folder / ".out"), contentOf(folder / ".err")};
    }

    std::vector<std::string> files(const std::string& name) const {
        std::vector<std::string> found;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder / name)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    fs::path folder;
};

std::string titleOf(const std::string& svg) {
    return SvgDocument(svg).all().at(1).text;
}

const std::string NAME = "Skew-T log-p diagram of ";

TEST_F(SkewTProgram, DrawsASingleSoundingWithoutBeingAsked) {
    const Finished drawn = run("'" + sourceFile("tests/reports/temp-bet-dagan-2026.txt").string() + "'");
    EXPECT_EQ(drawn.status, 0);
    EXPECT_EQ(drawn.errors, "");
    EXPECT_EQ(titleOf(drawn.output), NAME + "TEMP 40179, day 5, 23 UTC");
}

TEST_F(SkewTProgram, ListsSoundingsWhenNoneIsChosen) {
    const Finished listed = run("bulletins.txt");
    EXPECT_EQ(listed.status, 2);
    EXPECT_EQ(listed.output, "");
    EXPECT_EQ(listed.errors, "corvane-skewt: 4 soundings: choose one with --station, or draw all of them with --all\n"
                             "72403-1300: TEMP, day 13, 00 UTC, part A, 3 levels\n"
                             "72403-1312: TEMP, day 13, 12 UTC, part A, 3 levels\n"
                             "72572-1300: TEMP, day 13, 00 UTC, part A, 1 level\n"
                             "15.3N65.9W-1318: TEMP DROP, day 13, 18 UTC, part A, 2 levels\n");
}

TEST_F(SkewTProgram, ChoosesByStationOrName) {
    EXPECT_EQ(titleOf(run("bulletins.txt --station 72572").output), NAME + "TEMP 72572, day 13, 00 UTC");
    EXPECT_EQ(titleOf(run("bulletins.txt --station 72403-1312").output), NAME + "TEMP 72403, day 13, 12 UTC");
    EXPECT_EQ(titleOf(run("--station=15.3N65.9W-1318 bulletins.txt").output),
              NAME + "TEMP DROP 15.3\xC2\xB0N 65.9\xC2\xB0W, day 13, 18 UTC");
    const Finished two = run("bulletins.txt --station 72403");
    EXPECT_EQ(two.status, 2);
    EXPECT_NE(two.errors.find("corvane-skewt: 2 soundings"), std::string::npos);
}

TEST_F(SkewTProgram, NoSoundingIsStatusOneWithWhatWasRefused) {
    const Finished none = run("bulletins.txt --station 99999");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.output, "");
    EXPECT_NE(none.errors.find("corvane-skewt: 5 parts: 4 decoded"), std::string::npos) << none.errors;
    EXPECT_NE(none.errors.find("corvane-skewt: no sounding of 99999\n"), std::string::npos);

    write("bad.txt", "TTAA 63001 72403 99014 32259 1150 00140=\n");
    const Finished refused = run("bad.txt");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_NE(refused.errors.find("bad.txt:1: TTAA 72403: refused: "), std::string::npos) << refused.errors;
    EXPECT_NE(refused.errors.find("corvane-skewt: no sounding\n"), std::string::npos);

    write("empty.txt", "");
    EXPECT_EQ(run("empty.txt").status, 1);
    EXPECT_EQ(run("").status, 1);
}

TEST_F(SkewTProgram, TroubleIsStatusTwo) {
    const Finished missing = run("missing.txt");
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.output, "");
    EXPECT_NE(missing.errors.find("corvane-skewt: missing.txt: No such file or directory\n"), std::string::npos);
    for (const char* wrong :
         {"--size 100x100 bulletins.txt", "--size 1000 bulletins.txt", "--size 1000x1100x bulletins.txt",
          "--size x bulletins.txt", "--units mph bulletins.txt", "--top 0 bulletins.txt", "--top high bulletins.txt",
          "--all x --indices bulletins.txt", "--nonsense", "--all"}) {
        const Finished failed = run(wrong);
        EXPECT_EQ(failed.status, 2) << wrong;
        EXPECT_EQ(failed.output, "") << wrong;
        EXPECT_EQ(failed.errors.compare(0, 15, "corvane-skewt: "), 0) << failed.errors;
    }
    for (const char* wrong : {"nan", "inf", "abc", "0.5", "901", "100x", "-5"}) {
        EXPECT_NE(run(std::string("bulletins.txt --top=") + wrong)
                      .errors.find(std::string("--top: must be from 1 to 900, not ") + wrong + '\n'),
                  std::string::npos)
            << wrong;
    }
    const Finished full = run("bulletins.txt --station 72572 >/dev/full 2>/dev/null; test $? -eq 2 && echo two");
    EXPECT_EQ(full.output, "two\n");
    write("file", "");
    EXPECT_EQ(run("bulletins.txt --all file").status, 2);
}

TEST_F(SkewTProgram, WritesAFileForEachSounding) {
    const Finished all = run("--all pictures bulletins.txt");
    EXPECT_EQ(all.status, 0) << all.errors;
    EXPECT_EQ(all.output, "");
    EXPECT_EQ(files("pictures"),
              (std::vector<std::string>{"15.3N65.9W-1318.svg", "72403-1300.svg", "72403-1312.svg", "72572-1300.svg"}));
    EXPECT_EQ(titleOf(contentOf(folder / "pictures/72403-1312.svg")), NAME + "TEMP 72403, day 13, 12 UTC");
    EXPECT_EQ(contentOf(folder / "pictures/72572-1300.svg"), run("bulletins.txt --station 72572").output);
}

TEST_F(SkewTProgram, MakesNoFolderWithoutASounding) {
    EXPECT_EQ(run("--all pictures bulletins.txt --station 99999").status, 1);
    EXPECT_FALSE(fs::exists(folder / "pictures"));
    // A folder above it is not made.
    const Finished deep = run("--all no/pictures bulletins.txt");
    EXPECT_EQ(deep.status, 2);
    EXPECT_NE(deep.errors.find("corvane-skewt: no/pictures: No such file or directory\n"), std::string::npos);
}

TEST_F(SkewTProgram, QuietSaysOnlyThatThereIsNoSounding) {
    EXPECT_EQ(run("bulletins.txt --station 99999 --quiet").errors, "corvane-skewt: no sounding of 99999\n");
}

TEST_F(SkewTProgram, NamesOfFilesHoldNothingButSafeCharacters) {
    write("ships.txt", "UUAA ../X 13001 99602 70467 22106 99997 04060 07010 88999 77999=\n"
                       "UUAA .<A> 13001 99602 70467 22106 99997 04060 07010 88999 77999=\n");
    const Finished all = run("--all pictures ships.txt");
    EXPECT_EQ(all.status, 0) << all.errors;
    for (const std::string& name : files("pictures")) {
        EXPECT_EQ(name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-"),
                  std::string::npos)
            << name;
        EXPECT_NE(name.front(), '.');
    }
    EXPECT_EQ(files("pictures").size(), 2U);
}

TEST_F(SkewTProgram, OptionsReachThePicture) {
    const std::string usual = run("bulletins.txt --station 72572").output;
    const SvgDocument changed(run("bulletins.txt --station 72572 --dark --size 500x600 --units mps --top 500").output);
    EXPECT_EQ(changed.all().front().attribute("width"), "500");
    EXPECT_EQ(changed.all().front().attribute("height"), "600");
    EXPECT_EQ(changed.all().front().attribute("viewBox"), "0 0 500 600");
    EXPECT_NE(changed.all().at(3).attribute("fill"), SvgDocument(usual).all().at(3).attribute("fill"));
    const auto shows = [](const SvgDocument& svg, const std::string& text) {
        return std::any_of(svg.all().begin(), svg.all().end(),
                           [&](const SvgElement& element) { return element.text == text; });
    };
    EXPECT_TRUE(shows(changed, "m/s"));
    EXPECT_FALSE(shows(changed, "400"));
    EXPECT_TRUE(shows(changed, "700"));
    EXPECT_TRUE(shows(SvgDocument(usual), "kt"));
}

TEST_F(SkewTProgram, TableOfIndicesHasARowForEachSounding) {
    const Finished table = run("--indices bulletins.txt");
    EXPECT_EQ(table.status, 0);
    std::istringstream lines(table.output);
    std::string header;
    std::getline(lines, header);
    EXPECT_EQ(header,
              "form,station,day,hour,levels,sb_p,sb_lcl_p,sb_lcl_t,sb_lfc_p,sb_el_p,sb_cape,sb_cin,sb_li,mu_p,mu_lcl_p,"
              "mu_lcl_t,mu_lfc_p,mu_el_p,mu_cape,mu_cin,mu_li,k_index,total_totals,pw,fzl_p,fzl_z,wbz_p,wbz_z,"
              "shear_0_6km,lr_700_500");
    std::vector<std::string> rows;
    for (std::string row; std::getline(lines, row);) {
        EXPECT_EQ(std::count(row.begin(), row.end(), ','), std::count(header.begin(), header.end(), ',')) << row;
        rows.push_back(row);
    }
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].compare(0, 23, "TEMP,72403,13,0,3,1014,"), 0) << rows[0];
    EXPECT_EQ(rows[3].compare(0, 22, "TEMP DROP,,13,18,2,100"), 0) << rows[3];
    EXPECT_EQ(run("--indices bulletins.txt --station 72572").output.substr(header.size() + 1, 18),
              "TEMP,72572,13,0,1,");
    const Finished none = run("--indices bulletins.txt --station 99999");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.output, header + "\n");
}

TEST_F(SkewTProgram, SaysWhatWasDoneToThePartsOfTheStation) {
    write("mended.txt", "TTAA 63001 72403 99014 32259 11514 001 40 30057 11500 92822 25656 11510 88999 77999=\n"
                        "TTAA 63001 72572 99870 366 83 08505 88999 77999=\n");
    const Finished all = run("--indices mended.txt");
    EXPECT_NE(all.errors.find("TTAA 72403: mended: join: "), std::string::npos) << all.errors;
    EXPECT_NE(all.errors.find("TTAA 72572: mended: join: "), std::string::npos);
    const Finished one = run("mended.txt --station 72572");
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.errors.find("72403"), std::string::npos) << one.errors;
    EXPECT_NE(one.errors.find("TTAA 72572: mended: join: "), std::string::npos);
    EXPECT_EQ(run("mended.txt --station 72572 --quiet").errors, "");
}

TEST_F(SkewTProgram, HelpAndVersion) {
    const Finished help = run("--help");
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--station", "--all", "--units", "--top", "--size", "--dark", "--indices", "--quiet",
                               "--help", "--version"}) {
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    }
    const Finished version = run("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output.compare(0, 14, "corvane-skewt "), 0);
    EXPECT_EQ(version.errors, "");
}

}  // namespace
