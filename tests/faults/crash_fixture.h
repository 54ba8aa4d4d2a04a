// tests/faults/crash_fixture.h: a program that faults, and what it leaves.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "tests/support/child.h"
#include "tests/support/own_app.h"

namespace zor_test {

inline constexpr unsigned limit_ms = 60000;
inline constexpr unsigned after_crash = 0xBADE0000, after_second_crash = 0xBADEE000;
inline const char* const index_file = "user/SupportInfo/Dumps/dumps.ini";

inline const std::string begins = "THR_S #n surveyor's worker\n";
inline const std::string finished = "Logging finished\n";

inline std::string crashed(const std::string& code,
                           const std::string& where = "zorsys\\zor_thread@n")
{
    return "APPCRASH (" + code + " in THR#n) at " + where + "\n";
}

class Crash : public testing::Test
{
protected:
    Crash() : app(ZOR_TEST_CRASH_PROGRAM), folder(app.folder) {}

    Ended run(const std::string& mode, unsigned limit = limit_ms)
    {
        return run_child(app.program.string(), mode, limit, (folder / "out").string());
    }
    std::string printed() const
    {
        std::string text = folder.read("out");
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }
    // The log's texts, a line each.
    std::string log(int number = 1) const
    {
        return texts("user/crash_program" + std::to_string(number) + ".log.txt");
    }
    std::string texts(const std::string& name) const
    {
        const std::string bytes = folder.read(name);
        std::string text, line;
        for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
            line += bytes[i];
            if (bytes[i] != '\n')
                continue;
            // "00000.001 ; 7 ; text"
            const std::string rest = line.size() > 18 ? line.substr(16, line.size() - 18) : line;
            if (rest.compare(0, 8, "Program ") != 0)
                text += rest + "\n";
            line.clear();
        }
        // The threads' numbers are the system's, and so is the line in the source.
        return masked(masked(masked(text, "THR#"), "#"), "zor_thread@");
    }
    // Numbers behind `mark` as "n".
    static std::string masked(const std::string& text, const std::string& mark)
    {
        std::string out;
        for (size_t at = 0; at < text.size();) {
            const size_t end = std::min(text.find(mark, at), text.size());
            out += text.substr(at, end - at);
            at = end;
            if (at == text.size())
                break;
            out += mark;
            at += mark.size();
            const size_t digits =
                std::min(text.find_first_not_of("0123456789ABCDEF", at), text.size());
            out += digits > at ? "n" : "";
            at = digits;
        }
        return out;
    }
    std::string slot(int number) const
    {
        return "user/SupportInfo/Dumps/" + std::to_string(number);
    }
    // The names of the folders of dumps.
    std::set<std::string> slots() const
    {
        std::set<std::string> names;
        if (folder.has("user/SupportInfo/Dumps"))
            for (const auto& entry :
                 std::filesystem::directory_iterator(folder / "user/SupportInfo/Dumps"))
                if (entry.is_directory())
                    names.insert(entry.path().filename().string());
        return names;
    }
    std::set<std::string> files_in(const std::string& name) const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / name))
            names.insert(entry.path().filename().string());
        return names;
    }
    // What a fault leaves in a slot: the dump, and the log as far as it was then.
    void expect_whole_slot(int number, const std::string& log_until_then)
    {
        ASSERT_TRUE(folder.has(slot(number)));
        EXPECT_EQ(files_in(slot(number)),
                  (std::set<std::string>{"crash_program1.log.txt", "dump.dmp"}));
        EXPECT_EQ(texts(slot(number) + "/crash_program1.log.txt"), log_until_then);
        const std::string dump = folder.read(slot(number) + "/dump.dmp");
        ASSERT_GT(dump.size(), 1000u);
        EXPECT_EQ(dump.substr(0, 4), "MDMP");
    }
    // The same, of a fault in a thread that startThread started.
    void expect_recorded(const Ended& end, const std::string& code, int number = 0)
    {
        EXPECT_TRUE(end.with(after_crash)) << end.in_time << " " << end.signal << " " << end.code;
        EXPECT_EQ(log(), begins + crashed(code) + finished);
        EXPECT_EQ(index(), index_of(number));
        expect_whole_slot(number, begins + crashed(code));
    }
    void write_index(const std::string& text)
    {
        std::filesystem::create_directories(folder / "user/SupportInfo/Dumps");
        folder.write(index_file, text);
    }
    std::string index() const { return folder.read(index_file); }
    static std::string index_of(int slot)
    {
        return "[Settings]\r\nLastDumpIndex=" + std::to_string(slot) + "\r\n\r\n";
    }

    OwnApp app;
    TempFolder& folder;
};

struct CrashKind
{
    const char* mode;
    const char* code;
};

} // namespace zor_test
