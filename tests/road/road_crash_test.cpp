// The host program at fault: what its user sees, and what support finds.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/child.h"
#include "tests/support/own_app.h"

using namespace zor_test;
namespace fs = std::filesystem;

namespace {

std::string lines_of(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

// The log's bytes as ASCII.
std::string narrow(const std::string& bytes)
{
    std::string text;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2)
        text += bytes[i];
    return text;
}

} // namespace

TEST(RoadCrash, OnPurposeLeavesItsRecords)
{
    if (!ZOR_TEST_HEAP_LOCK)
        GTEST_SKIP() << "the checkers tell of the fault themselves";
    OwnApp app(ZOR_TEST_SURVEY_ROAD);
    const std::string out = (app.folder / "out").string();
    for (int run = 0; run < 2; ++run) {
        const std::string log = "survey_road" + std::to_string(run + 1) + ".log.txt",
                          slot = "user/SupportInfo/Dumps/" + std::to_string(run);
        const Ended end = run_child(app.program.string(), "--crash-test", 60000, out);
        EXPECT_TRUE(end.with(0xBADE0000)) << end.signal << " " << end.code;
        const std::string user = OwnApp::native(app.folder / "user");
        EXPECT_EQ(lines_of(app.folder.read("out")), "log: " + user + "\\" + log +
                                                        "\nrecords of faults: " + user +
                                                        "\\SupportInfo\\Dumps\n");
        EXPECT_EQ(app.folder.read(slot + "/dump.dmp").substr(0, 4), "MDMP");
        const std::string text = narrow(app.folder.read("user/" + log));
        EXPECT_NE(text.find("APPCRASH (C0000005 in THR#"), std::string::npos) << text;
        const std::string copy = narrow(app.folder.read(slot + "/" + log));
        EXPECT_NE(copy.find("APPCRASH (C0000005 in THR#"), std::string::npos) << copy;
        EXPECT_EQ(text.find("THR_F"), std::string::npos);
    }
}

TEST(RoadCrash, WorkIsDoneInAThreadOfItsOwn)
{
    OwnApp app(ZOR_TEST_SURVEY_ROAD);
    const std::string out = (app.folder / "out").string();
    EXPECT_TRUE(run_child(app.program.string(), "--version", 60000, out).with(0));
    EXPECT_TRUE(run_child(app.program.string(), "--no-such-option", 60000, out).with(3))
        << "its result is the program's";
    const std::string text = narrow(app.folder.read("user/survey_road1.log.txt"));
    EXPECT_NE(text.find(" survey_road\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("THR_F #"), std::string::npos) << text;
}
