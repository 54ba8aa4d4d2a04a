// tests/fs/other_process.h: another process that holds a file.
#pragma once

#include <gtest/gtest.h>
#include <stdio.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/fs/cfile.h"

#ifndef ZOR_TEST_LOCKER
#error "the build names the program that locks"
#endif

namespace zor_test {

// From its making to its end another process has `name` open for itself alone, if it got it.
class OtherProcess
{
public:
    OtherProcess(const TempFolder& folder, const std::string& name)
    {
        const std::filesystem::path sign = folder / "other-process",
                                    refused = folder / "other-process.refused";
        std::filesystem::remove(sign);
        std::filesystem::remove(refused);
        const std::string command = std::string(ZOR_TEST_LOCKER) + " \"" +
                                    (folder / name).string() + "\" \"" + sign.string() + "\"";
        m_input = ZOR_TEST_POPEN(command.c_str(), "w");
        // Until it says what came of it; a process that does not start fails the test.
        for (int i = 0; i < 3000 && !m_locked && !m_refused; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            m_locked = std::filesystem::exists(sign);
            m_refused = std::filesystem::exists(refused);
        }
        EXPECT_TRUE(m_locked || m_refused) << "the other process did not start";
    }
    ~OtherProcess()
    {
        if (m_input != nullptr)
            ZOR_TEST_PCLOSE(m_input);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    bool locked() const { return m_locked; }

private:
    FILE* m_input = nullptr;
    bool m_locked = false, m_refused = false;
};

} // namespace zor_test
