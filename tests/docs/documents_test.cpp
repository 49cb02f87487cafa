// The documents: what they show is run, and they name everything that they have to name.
#include "support/CapturedOutput.h"
#include "support/OpenDecoder.h"
#include "support/Places.h"
#include "support/ProgramRun.h"
#include "support/Samples.h"

#include <corvane/Corvane.h>

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// README.md shows this function, character by character.
void printHeights(const std::string& text) {
    try {
        const Corvane report(text);
        std::cout << "station " << report.bsn() << ", day " << report.dayOfMonth() << '\n';
        for (const Corvane::Level& level : report.levels({Corvane::LT_MANDATORY})) {
            const auto height = level.fields.find(Corvane::LF_HEIGHT);
            if (height != level.fields.end()) {  // what the report does not give is not in the map
                std::cout << level.fields.at(Corvane::LF_PRES) << " hPa: " << height->second << " m\n";
            }
        }
    } catch (const std::string& fault) {  // a coding fault
        std::cerr << fault << '\n';
    } catch (const std::out_of_range& fault) {  // a group too short to be read
        std::cerr << fault.what() << '\n';
    }
}

const std::string HEADER = "type,pres,tdry,dp,wspd,wdir,height,time,lat,lon,pres2\n";

std::string document(const std::string& name) {
    return contentOf(sourceFile(name));
}

// The C++ sources directly in a folder, one after the other. The bulletins of src/feed have messages of their own.
std::string sourcesIn(const std::string& folder) {
    std::string sources;
    for (const std::filesystem::path& file : filesIn(folder)) {
        if (file.extension() == ".cpp" || file.extension() == ".h") {
            sources += contentOf(file);
        }
    }
    return sources;
}

bool beginsWith(const std::string& text, const std::string& beginning) {
    return text.compare(0, beginning.size(), beginning) == 0;
}

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

// A fenced block of a Markdown document: the "## " heading above it, the two words after the fence, its lines.
struct Block {
    std::string heading;
    std::string kind;
    std::string option;
    std::string text;
};

struct Document {
    std::vector<std::string> headings;
    std::vector<Block> blocks;
};

Document parsed(const std::string& name) {
    Document result;
    std::istringstream lines(document(name));
    std::string line;
    bool inside = false;
    while (std::getline(lines, line)) {
        if (beginsWith(line, "```")) {
            inside = !inside;
            if (inside) {
                Block block;
                block.heading = result.headings.empty() ? "" : result.headings.back();
                std::istringstream(line.substr(3)) >> block.kind >> block.option;
                result.blocks.push_back(block);
            }
        } else if (inside) {
            result.blocks.back().text += line + "\n";
        } else if (beginsWith(line, "## ")) {
            result.headings.push_back(line.substr(3));
        }
    }
    EXPECT_FALSE(inside) << name << ": a fence is open at the end";
    return result;
}

std::vector<Block> blocksOf(const Document& parsedDocument, const std::string& kind) {
    std::vector<Block> chosen;
    for (const Block& block : parsedDocument.blocks) {
        if (block.kind == kind) {
            chosen.push_back(block);
        }
    }
    return chosen;
}

ProgramRun decode(const std::string& report, const std::string& outputFile = "") {
    Streams streams;
    streams.input = report;
    streams.outputFile = outputFile;
    return runProgram({}, streams);
}

// The first capture of every match of a pattern.
std::vector<std::string> captures(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator(); ++match) {
        found.push_back((*match)[1].str());
    }
    return found;
}

// The texts in double quotes that follow a pattern in a C++ source, without trailing spaces.
std::vector<std::string> literalsAfter(const std::string& source, const std::string& pattern) {
    std::vector<std::string> literals = captures(source, pattern + R"re("((?:[^"\\]|\\.)*)")re");
    for (std::string& literal : literals) {
        literal = std::regex_replace(literal, std::regex(R"(\\")"), "\"");
        literal.erase(literal.find_last_not_of(' ') + 1);
    }
    return literals;
}

// The fixed beginnings of the messages in the sources.
std::vector<std::string> messagesOfTheSource() {
    const std::string source = sourcesIn("src");
    std::vector<std::string> messages;
    for (const char* const pattern : {R"(throwError(?:Msg|Near)\(\s*)", R"(throw\s+)", R"(std::string msg =\s*)"}) {
        const std::vector<std::string> found = literalsAfter(source, pattern);
        messages.insert(messages.end(), found.begin(), found.end());
    }
    return messages;
}

const std::string ABNORMAL = "The program ends abnormally: basic_string::substr";

bool isOfTheProgram(const std::string& heading) {
    return beginsWith(heading, "corvane: ");
}

// The pattern of the messages under a heading: N, GROUP, FILE and REASON stand for what differs.
std::regex messagePattern(const std::string& heading) {
    std::string pattern = std::regex_replace(heading, std::regex(R"([.^$|()\[\]{}*+?\\/])"), R"(\$&)");
    pattern = std::regex_replace(pattern, std::regex(R"(\bN\b)"), "[0-9]+");
    pattern = std::regex_replace(pattern, std::regex(R"(\bGROUP\b)"), "[^ ]+");
    pattern = std::regex_replace(pattern, std::regex(R"(\b(FILE|REASON)\b)"), ".+");
    return std::regex(pattern + "( Error detected .*)?\n");
}

// The fault of a section decoder called alone: the first line of the block names it, the second has the groups.
std::string faultOfCall(const std::string& block) {
    const std::map<std::string, void (Corvane::*)()> decoders{{"decodeMaxWind", &OpenDecoder::decodeMaxWind},
                                                              {"decodeSection6", &OpenDecoder::decodeSection6},
                                                              {"decodeRELSPGSPL", &OpenDecoder::decodeRELSPGSPL}};
    const std::size_t end = block.find('\n');
    const auto decoder = decoders.find(block.substr(0, end));
    if (decoder == decoders.end()) {
        return "no such decoder in this test";
    }
    OpenDecoder open = OpenDecoder::withGroups(block.substr(end + 1));
    return faultOf([&] { (open.*decoder->second)(); });
}

void expectAsShown(const Block& given, const Block& shown) {
    SCOPED_TRACE(given.text);
    EXPECT_EQ(given.heading, shown.heading);
    if (given.kind == "call") {
        ASSERT_EQ(shown.kind, "message");
        EXPECT_EQ(faultOfCall(given.text) + "\n", shown.text);
        return;
    }
    ProgramRun run;
    if (given.kind == "arguments") {
        run = runProgram({given.text.substr(0, given.text.size() - 1)});
    } else {
        ASSERT_EQ(given.kind, "report");
        run = decode(given.text, given.option.empty() ? "" : given.option.substr(std::string("output=").size()));
    }
    EXPECT_EQ(run.output, "");
    if (shown.kind == "abnormal") {
        EXPECT_EQ(run.signal, SIGABRT);
        EXPECT_TRUE(contains(run.errors, shown.text.substr(0, shown.text.size() - 1))) << run.errors;
    } else {
        ASSERT_EQ(shown.kind, "message");
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_EQ(run.errors, shown.text);
    }
}

}  // namespace

// ---- README.md ---------------------------------------------------------------------------------------------------

TEST(Readme, TheReportShownGivesTheTableShown) {
    const Document readme = parsed("README.md");
    const std::vector<Block> reports = blocksOf(readme, "text");
    const std::vector<Block> tables = blocksOf(readme, "csv");
    ASSERT_FALSE(reports.empty());
    ASSERT_EQ(tables.size(), 1U);
    const ProgramRun run = decode(reports[0].text);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output, tables[0].text);
    EXPECT_EQ(run.errors, "");
}

TEST(Readme, TheFirstCommandDecodesTheReportShown) {
    const Document readme = parsed("README.md");
    const std::vector<Block> commands = blocksOf(readme, "sh");
    const std::vector<Block> reports = blocksOf(readme, "text");
    ASSERT_FALSE(reports.empty());
    ASSERT_FALSE(commands.empty());
    const std::vector<std::string> files = captures(commands[0].text, R"(scripts/run (\S+)\n)");
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(document(files.front()), reports[0].text);
    EXPECT_TRUE(contains(commands[0].text, "scripts/test\n"));
}

#if defined(CORVANE_HAS_FEED)
TEST(Readme, TheBulletinShownGivesTheRowsAndTheLinesShown) {
    const Document readme = parsed("README.md");
    const std::vector<Block> bulletins = blocksOf(readme, "bulletin");
    const std::vector<Block> rows = blocksOf(readme, "rows");
    const std::vector<Block> said = blocksOf(readme, "said");
    ASSERT_EQ(bulletins.size(), 1U);
    ASSERT_EQ(rows.size(), 1U);
    ASSERT_EQ(said.size(), 1U);
    Streams streams;
    streams.program = feedPath();
    streams.input = bulletins[0].text;
    const ProgramRun run = runProgram({}, streams);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output, rows[0].text);
    EXPECT_EQ(run.errors, said[0].text);
}
#endif

TEST(Readme, TheCodeShownIsCompiledHere) {
    const std::vector<Block> code = blocksOf(parsed("README.md"), "cpp");
    ASSERT_EQ(code.size(), 1U);
    const std::string test = document("tests/docs/documents_test.cpp");
    const std::size_t begin = test.find("void printHeights(");
    const std::size_t end = test.find("\n}\n", begin) + 3;
    const std::size_t beginShown = code.front().text.find("void ");
    ASSERT_NE(beginShown, std::string::npos);
    EXPECT_EQ(code.front().text.substr(beginShown), test.substr(begin, end - begin));
    for (const std::string& include : captures(code.front().text.substr(0, beginShown), "(#include .*)\n")) {
        EXPECT_TRUE(contains(test, "\n" + include + "\n")) << include;
    }
}

TEST(Readme, TheCodeShownPrintsTheHeights) {
    const std::string output = outputOf([] {
        printHeights("TTAA 56000 72403 99014 32259 11514 00140 30057 11500 92/// 24056 85500 18056 88999 77999");
    });
    EXPECT_EQ(output, "station 72403, day 6\n1000 hPa: 140 m\n850 hPa: 1500 m\n");
}

TEST(Readme, TheMessageShownIsPrinted) {
    const std::vector<Block> texts = blocksOf(parsed("README.md"), "text");
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(decode("TTAA 06126 72403 99013 12456").errors, texts[1].text);
}

TEST(Readme, EveryColumnIsExplained) {
    const std::string readme = document("README.md");
    for (const std::string& column : captures(HEADER, "([a-z0-9]+)[,\n]")) {
        EXPECT_TRUE(contains(readme, "`" + column + "`")) << column;
    }
}

// ---- doc/table.md ------------------------------------------------------------------------------------------------

TEST(TableDocument, EveryReportGivesTheRowsShown) {
    const std::vector<Block> blocks = parsed("doc/table.md").blocks;
    ASSERT_GE(blocks.size(), 60U);
    ASSERT_EQ(blocks.size() % 2, 0U);
    for (std::size_t i = 0; i < blocks.size(); i += 2) {
        SCOPED_TRACE(blocks[i].text);
        ASSERT_EQ(blocks[i].kind, "report");
        ASSERT_EQ(blocks[i + 1].kind, "rows");
        const ProgramRun run = decode(blocks[i].text);
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(run.output, HEADER + blocks[i + 1].text);
        EXPECT_EQ(run.errors, "");
    }
}

TEST(TableDocument, EveryColumnAndEveryKindIsExplained) {
    const std::string table = document("doc/table.md");
    EXPECT_TRUE(contains(table, "    " + HEADER));
    for (const std::string& column : captures(HEADER, "([a-z0-9]+)[,\n]")) {
        EXPECT_TRUE(contains(table, "\n- `" + column + "`") || contains(table, ", `" + column + "`: ")) << column;
    }
    const Document readme = parsed("doc/table.md");
    for (int kind = Corvane::LT_SURFACE; kind <= Corvane::LT_SPLASHPOINTRAWGPS; ++kind) {
        const std::string name = Corvane::Level(static_cast<Corvane::LEVEL_TYPE>(kind)).name();
        EXPECT_TRUE(contains(table, "\n| `" + name + "` | ")) << name;
        bool shown = false;
        for (const Block& rows : blocksOf(readme, "rows")) {
            shown = shown || contains("\n" + rows.text, "\n" + name + ",");
        }
        EXPECT_TRUE(shown) << "no example of " << name;
    }
}

// ---- doc/errors.md -----------------------------------------------------------------------------------------------

TEST(ErrorsDocument, EveryExampleGivesTheMessageShown) {
    const std::vector<Block> blocks = parsed("doc/errors.md").blocks;
    ASSERT_GE(blocks.size(), 50U);
    ASSERT_EQ(blocks.size() % 2, 0U);
    for (std::size_t i = 0; i < blocks.size(); i += 2) {
        expectAsShown(blocks[i], blocks[i + 1]);
    }
}

TEST(ErrorsDocument, EveryMessageIsUnderItsHeading) {
    const Document errors = parsed("doc/errors.md");
    for (const std::string& heading : errors.headings) {
        int examples = 0;
        for (const Block& block : errors.blocks) {
            if (block.heading != heading) {
                continue;
            }
            examples += block.kind == "message" || block.kind == "abnormal" ? 1 : 0;
            if (block.kind == "message") {
                EXPECT_TRUE(std::regex_match(block.text, messagePattern(heading))) << heading << "\n" << block.text;
            }
        }
        EXPECT_GE(examples, 1) << heading;
    }
}

TEST(ErrorsDocument, NoMessageOfTheDecoderIsMissing) {
    const std::vector<std::string> headings = parsed("doc/errors.md").headings;
    const std::vector<std::string> messages = messagesOfTheSource();
    for (const std::string& message : messages) {
        int explained = 0;
        for (const std::string& heading : headings) {
            explained += beginsWith(heading, message) ? 1 : 0;
        }
        EXPECT_EQ(explained, 1) << message;
    }
    for (const std::string& heading : headings) {
        bool given = isOfTheProgram(heading) || heading == ABNORMAL;
        for (const std::string& message : messages) {
            given = given || beginsWith(heading, message);
        }
        EXPECT_TRUE(given) << "no such message in the source: " << heading;
    }
}

// The scan for messages finds literals after the two functions that throw, after `throw`, and in `msg`. Whoever throws
// in another way must extend it.
TEST(ErrorsDocument, EveryThrowOfTheDecoderIsScanned) {
    const std::string source = sourcesIn("src");
    const std::size_t calls = captures(source, R"((throwError(?:Msg|Near)\())").size();
    const std::size_t definitions = captures(source, R"((Corvane::throwError(?:Msg|Near)\())").size();
    EXPECT_EQ(definitions, 2U);
    EXPECT_EQ(calls - definitions, literalsAfter(source, R"(throwError(?:Msg|Near)\(\s*)").size());
    // Those two functions, the station number, and the `msg` of a missing group. Faults of coding are texts.
    EXPECT_EQ(captures(source, R"([ {;](throw\s+)(?!std::))").size(), 4U);
    EXPECT_EQ(literalsAfter(source, R"(throw\s+)").size(), 1U);
    EXPECT_EQ(captures(source, R"((throw msg;))").size(), literalsAfter(source, R"(std::string msg =\s*)").size());
}

TEST(ErrorsDocument, NoMessageOfTheProgramIsMissing) {
    const std::vector<std::string> headings = parsed("doc/errors.md").headings;
    const std::vector<std::string> messages = captures(sourcesIn("app"), R"re("(corvane: [^"]*)")re");
    std::size_t explained = 0;
    for (const std::string& heading : headings) {
        explained += isOfTheProgram(heading) ? 1U : 0U;
    }
    EXPECT_EQ(messages.size(), explained);
    for (const std::string& message : messages) {
        bool found = false;
        for (const std::string& heading : headings) {
            found = found || beginsWith(heading, message);
        }
        EXPECT_TRUE(found) << message;
    }
}

// ---- man page ----------------------------------------------------------------------------------------------------

TEST(ManPage, EveryMessageOfTheProgramIsNamed) {
    const std::string page = std::regex_replace(document("doc/corvane.1"), std::regex(R"(\\\(dq)"), "\"");
    const Document errors = parsed("doc/errors.md");
    for (const Block& block : errors.blocks) {
        if (block.kind == "report" || block.kind == "arguments") {
            EXPECT_TRUE(contains(page, ".B \"" + block.heading + "\"\n") || block.heading == ABNORMAL) << block.heading;
        }
    }
}

TEST(ManPage, EveryColumnAndEveryKindIsExplained) {
    const std::string page = document("doc/corvane.1");
    for (const std::string& column : captures(HEADER, "([a-z0-9]+)[,\n]")) {
        const bool isPosition = column == "lat" || column == "lon";
        EXPECT_TRUE(contains(page, isPosition ? ".BR lat \", \" lon\n" : ".B " + column + "\n")) << column;
    }
    for (int kind = Corvane::LT_SURFACE; kind <= Corvane::LT_SPLASHPOINTRAWGPS; ++kind) {
        const std::string name = Corvane::Level(static_cast<Corvane::LEVEL_TYPE>(kind)).name();
        EXPECT_TRUE(contains(page, ".B " + name + "\n")) << name;
    }
}

TEST(ManPage, TheExampleGivesTheTableShown) {
    const std::string page = std::regex_replace(document("doc/corvane.1"), std::regex(R"(\\e\n *)"), "");
    std::smatch example;
    ASSERT_TRUE(std::regex_search(page, example, std::regex(R"(\n\$ echo ([^|]*) \| corvane\n([^$]*?)\.EE\n)")));
    const ProgramRun run = decode(example[1].str() + "\n");
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output, example[2].str());
}

// ---- all of them -------------------------------------------------------------------------------------------------

TEST(Documents, NameTheVersionOfTheBuild) {
    const std::vector<std::string> versions = captures(document("CHANGELOG.md"), "\n## ([0-9.]+) ");
    ASSERT_FALSE(versions.empty());
    EXPECT_EQ(versions.front(), CORVANE_VERSION);
    EXPECT_TRUE(contains(document("doc/corvane.1"), " \"corvane " CORVANE_VERSION "\" "));
}

TEST(Documents, LinksPointToExistingFiles) {
    std::size_t documents = 0;
    std::size_t links = 0;
    for (const std::filesystem::path& path : filesBelow(".")) {
        if (path.extension() != ".md") {
            continue;
        }
        ++documents;
        for (const std::string& link : captures(contentOf(path), R"(\]\(([^)#:]+)\))")) {
            ++links;
            EXPECT_TRUE(std::filesystem::exists(path.parent_path() / link)) << path << ": " << link;
        }
    }
    // README.md, CONTRIBUTING.md, CHANGELOG.md, doc/table.md, doc/errors.md and the notes beside the tests at least.
    EXPECT_GE(documents, 8U);
    EXPECT_GE(links, 10U);
}
