#include "zorutils/zorsys/dll_loader.h"

#include <new>
#include <vector>

#include "zorutils/fs/app_dirs.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/memory_internal.h"
#include "zorutils/zorsys/zor_logger.h"
#include "zorutils/zortext/zor_ui.h"

namespace {

typedef zor_text::CZorStringT<WCHAR> String;

void log_memory()
{
    using MemoryFuncs::in_32_bits;
    const MEMORYSTATUS status = MemoryFuncs::memory_status();
    zor_logging::ZOR_TRACE_ALWAYS("Total Memory: %u bytes, Free Memory: %u bytes, "
                                  "Total VM: %u bytes, Free VM: %u bytes",
                                  in_32_bits(status.dwTotalPhys), in_32_bits(status.dwAvailPhys),
                                  in_32_bits(status.dwTotalVirtual),
                                  in_32_bits(status.dwAvailVirtual));
}

// The blanks at the ends are part of the texts that are translated.
void tell_user(const WCHAR* library_name, DWORD error)
{
    zor_ui::IZorUiTranslate& language = zor_ui::lang_ui();
    String text = language.translate(ZOR_W("Could not load module "));
    text += library_name;
    text += ZOR_W(".\r\n\r\n");
    text += language.translate(error == ERROR_MOD_NOT_FOUND
                                   ? ZOR_W("Application reinstall may be needed. ")
                                   : ZOR_W("Save your work and quit application. Restarting device "
                                           "may be needed as well. "));
    text += language.translate(ZOR_W("If the problem persists, collect application log files and "
                                     "contact support."));
    zor_ui::msg_ui().showMessage(text.c_str());
}

// A wide text as a narrow format's "%s" sees it: its first character.
const char* as_narrow(const WCHAR* text)
{
    return reinterpret_cast<const char*>(text);
}

} // namespace

// --- The shared loader.

TDLLFuncLoader::TDLLFuncLoader(const String& name)
    : refCount(1), module(nullptr), result(0), dllName(name), functions(new Functions)
{
}

TDLLFuncLoader::~TDLLFuncLoader()
{
    delete functions;
    if (module != nullptr)
        FreeLibrary(module);
}

TDLLFuncLoader::Registry& TDLLFuncLoader::loaderRegistry()
{
    static Registry* const one = new Registry; // lives for ever: hosts release at exit too
    return *one;
}

TDLLFuncLoader* TDLLFuncLoader::LoadDLL(const String& name)
{
    try {
        // Entered first, as a null, and left so where there is no memory for the loader.
        TDLLFuncLoader*& entry = loaderRegistry()[name];
        if (entry != nullptr)
            ++entry->refCount;
        else
            entry = new TDLLFuncLoader(name);
        return entry;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void TDLLFuncLoader::ReleaseDLL(TDLLFuncLoader* loader)
{
    if (--loader->refCount > 0)
        return;
    loaderRegistry().erase(loader->dllName);
    delete loader;
}

FARPROC TDLLFuncLoader::GetFunc(const WCHAR* functionName)
{
    const String name = functionName;
    const auto known = functions->find(name);
    if (known != functions->end())
        return known->second;
    if (result != 0)
        return nullptr;
    module = LoadLibraryW(dllName.c_str());
    if (module == nullptr) {
        result = static_cast<LONG>(GetLastError());
        return nullptr;
    }
    return (*functions)[name] = ::GetProcAddress(module, name.c_str());
}

LONG TDLLFuncLoader::GetResult() const
{
    return result;
}

String TDLLFuncLoader::GetDLLName() const
{
    return dllName;
}

// --- Single functions.

mandatory_error::ZorErrorCode<bool> GetLibraryFunction(HINSTANCE* library, FARPROC* function,
                                                       const WCHAR* functionName,
                                                       const WCHAR* libraryName)
{
    if (library == nullptr)
        return false;
    String path = GetExeDir();
    path += ZOR_W("\\");
    path += libraryName;
    *library = LoadLibraryW(path.c_str());
    if (*library == nullptr) {
        const DWORD error = GetLastError();
        zor_logging::ZOR_TRACE_ALWAYS("Could not load library %S err code = %d", path.c_str(),
                                      error);
        if (error == ERROR_OUTOFMEMORY)
            log_memory();
        tell_user(libraryName, error);
        return false;
    }
    if (function == nullptr)
        return true;
    *function = GetProcAddress(*library, functionName);
    if (*function != nullptr)
        return true;
    // Support staff know this line by the first characters of the names; it is kept as it is.
    const DWORD error = GetLastError();
    zor_logging::ZOR_TRACE_ALWAYS("Missing function '%s' in %s. Error code: %d",
                                  as_narrow(functionName), as_narrow(libraryName), error);
    FreeLibraryFunction(*library);
    return false;
}

void FreeLibraryFunction(HINSTANCE& library)
{
    if (library == nullptr)
        return;
    FreeLibrary(library);
    library = nullptr;
}

FARPROC GetProcAddress(HINSTANCE module, const WCHAR* name)
{
    const int size = WideCharToMultiByte(CP_ACP, 0, name, -1, nullptr, 0, nullptr, nullptr);
    std::vector<char> narrow(static_cast<size_t>(size) + 1, '\0');
    WideCharToMultiByte(CP_ACP, 0, name, -1, narrow.data(), size, nullptr, nullptr);
    return GetProcAddress(module, narrow.data());
}
