#include "zorutils/zorsys/crash_dump_internal.h"

#include "zorutils/formats/number_text.h"
#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/app_dirs.h"
#include "zorutils/fs/file_names.h"
#include "zorutils/fs/zor_ini_file.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_logger.h"

namespace zor::fault_handling {

namespace {

typedef zor_text::CZorStringT<WCHAR> String;
using zor_settings::CThreeTupleStore;

constexpr int no_slot = -1;
constexpr int last_slot = 9;
constexpr int dump_type = MiniDumpWithHandleData | MiniDumpScanMemory |
                          MiniDumpWithIndirectlyReferencedMemory | MiniDumpWithProcessThreadData;

String joined(const String& folder, const WCHAR* name)
{
    // A forward slash behind a path with backslashes, as support staff know these paths.
    String path = folder;
    path += ZOR_W("/");
    path += name;
    return path;
}

String dumps_folder()
{
    return joined(GetRootDir(), ZOR_W("SupportInfo/Dumps"));
}

int slot_in(const CThreeTupleStore& store, const WCHAR* section)
{
    String text;
    int slot = no_slot;
    if (!store.getValue(section, ZOR_W("LastDumpIndex"), text) ||
        !zor_formats::StringToInt(text.c_str(), slot))
        return no_slot;
    return slot;
}

// Moves the index on to the next slot. False if it could not be written.
bool take_slot(const String& folder, int& slot)
{
    const String path = joined(folder, ZOR_W("dumps.ini"));
    CThreeTupleStore store;
    auto encoding = zor::text_utils::TEXT_ENCODING_UNKNOWN;
    const bool read = zor_settings::readSettingsAsIni(path.c_str(), store, encoding);
    const int last = read ? slot_in(store, ZOR_W("Settings")) : no_slot;
    slot = last >= last_slot ? 0 : last + 1;
    store.setValue(ZOR_W("Settings"), ZOR_W("LastDumpIndex"), slot);
    if (slot_in(store, ZOR_W("OstrLINK")) == slot)
        store.setValue(ZOR_W("OstrLINK"), ZOR_W("LastDumpIndex"), no_slot);
    return zor_settings::writeSettingsAsIni(path.c_str(), store, encoding);
}

bool copy_log(const String& folder)
{
    const String log = zor_logging::getZorMainLogFileName();
    const String copy =
        joined(folder, zor::file_names::ExtractFileNameWithExtFromPathName(log).c_str());
    return CopyFileW(log.c_str(), copy.c_str(), FALSE) != 0;
}

bool write_dump(const String& folder, _EXCEPTION_POINTERS* exception)
{
    const HANDLE file = CreateFileW(joined(folder, ZOR_W("dump.dmp")).c_str(), GENERIC_WRITE, 0,
                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    MINIDUMP_EXCEPTION_INFORMATION information = {};
    information.ThreadId = GetCurrentThreadId();
    information.ExceptionPointers = exception;
    information.ClientPointers = TRUE;
    const BOOL written =
        MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file,
                          static_cast<MINIDUMP_TYPE>(dump_type), &information, nullptr, nullptr);
    CloseHandle(file);
    return written != 0;
}

} // namespace

void prepare_dump_folder()
{
    try {
        // Each of these makes something on its first use: the log, tables, texts of the system.
        zor_logging::getZorMainLogFileName();
        CThreeTupleStore store;
        auto encoding = zor::text_utils::TEXT_ENCODING_UNKNOWN;
        static_cast<void>(zor_settings::readSettingsAsIni(
            joined(dumps_folder(), ZOR_W("dumps.ini")).c_str(), store, encoding));
        static_cast<void>(slot_in(store, ZOR_W("Settings")));
        zor_vector<WIN32_FIND_DATAW> entries;
        FileFuncs::GetFileEntriesInFolder(entries, FIND_FOLDER_FILES, GetRootDir(), nullptr);
        const String from_code_page("\x80");
    } catch (...) {
        // Without memory a fault is recorded by what there is.
    }
}

bool write_dump_folder(_EXCEPTION_POINTERS* exception)
{
    const String folder = dumps_folder();
    FileFuncs::CreateDirRecursive(folder);
    int slot = no_slot;
    // The index first: a dump that dies halfway leaves the next one its own slot.
    if (!take_slot(folder, slot)) {
        zor_logging::ZOR_TRACE_ALWAYS("APPCRASH: could not write dumps.ini");
        return false;
    }
    const String dump_folder = joined(folder, zor_formats::IntToString(slot).c_str());
    FileFuncs::CreateDirRecursive(dump_folder);
    FileFuncs::EmptyFolder(dump_folder);
    const bool copied = copy_log(dump_folder);
    if (!copied)
        zor_logging::ZOR_TRACE_ALWAYS("APPCRASH: could not copy logfile");
    return write_dump(dump_folder, exception) && copied;
}

} // namespace zor::fault_handling
