// zorutils/zorsys/dll_loader.h: functions of libraries that are loaded while the program runs.
//
//     TDLLFuncLoader* const proj = TDLLFuncLoader::LoadDLL(ZOR_W("proj.dll"));
//     if (FARPROC const forward = proj->GetFunc(ZOR_W("forward")))
//         reinterpret_cast<Forward*>(reinterpret_cast<void*>(forward))(point);
//     TDLLFuncLoader::ReleaseDLL(proj);
//
//     HINSTANCE library = nullptr;
//     if (GetLibraryFunction(&library, &function, ZOR_W("convert"), ZOR_W("formats.dll")))
//         ...
//     FreeLibraryFunction(library);
//
// There are no locks: each of these belongs on one thread, or under a lock of the host's.
#pragma once

#include <map>

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_error_code.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

// A library that callers share by its name. Nothing is reported: a failure is a null function and
// the load's error.
class ZOR_API TDLLFuncLoader
{
public:
    // A copy shares the functions, and nobody counts it. It outlives none of its source's counts.
    TDLLFuncLoader(const TDLLFuncLoader& source) = default;
    TDLLFuncLoader& operator=(const TDLLFuncLoader&) = delete;

    // The loader of that name, made at first; each call counts. The name counts as it is spelled.
    // Nothing is loaded yet. Null if there is no memory for it.
    static TDLLFuncLoader* LoadDLL(const zor_text::CZorStringT<WCHAR>& name);

    // Gives one count back; with the last the loader goes, and the library is freed once.
    static void ReleaseDLL(TDLLFuncLoader* loader);

    // A function of the library; null if there is none or the library cannot be loaded, which is
    // final for this loader. Answers are kept, null ones too. Each function that is not known yet
    // loads the library once more, so that it stays in the process after the last release where two
    // or more were looked up: hosts rely on it.
    FARPROC GetFunc(const WCHAR* functionName);

    // The system's error of the failed load, or 0, as before the first GetFunc.
    LONG GetResult() const;

    zor_text::CZorStringT<WCHAR> GetDLLName() const;

private:
    struct ByText
    {
        bool operator()(const zor_text::CZorStringT<WCHAR>& a,
                        const zor_text::CZorStringT<WCHAR>& b) const
        {
            return a.Compare(b.c_str()) < 0;
        }
    };
    typedef std::map<zor_text::CZorStringT<WCHAR>, FARPROC, ByText> Functions;
    typedef std::map<zor_text::CZorStringT<WCHAR>, TDLLFuncLoader*, ByText> Registry;

    explicit TDLLFuncLoader(const zor_text::CZorStringT<WCHAR>& name);
    ~TDLLFuncLoader();
    static Registry& loaderRegistry();

    int refCount;
    HINSTANCE module;
    LONG result;
    zor_text::CZorStringT<WCHAR> dllName;
    Functions* functions; // shared by copies, released by the last count
};

// Loads a library from the application's folder (GetExeDir), and a function of it unless `function`
// is null. False with a null `library`, without a message. A library that cannot be loaded is
// logged and told to the user, by zor_ui::msg_ui in the language of zor_ui::lang_ui. A missing
// function is logged alone, with the first characters of both names only, and the library is freed.
ZOR_API mandatory_error::ZorErrorCode<bool> GetLibraryFunction(HINSTANCE* library,
                                                               FARPROC* function,
                                                               const WCHAR* functionName,
                                                               const WCHAR* libraryName);

// Frees a library and makes its handle null; a null one is fine.
ZOR_API void FreeLibraryFunction(HINSTANCE& library);

// The system's function of that name, for a name that goes through the active code page; null for
// a null one.
ZOR_API FARPROC GetProcAddress(HINSTANCE module, const WCHAR* name);
