// zorutils/fs/compact_path_internal.h: a path shortened to what fits.
#pragma once

#include <functional>

#include "zorutils/zortext/zor_string.h"

namespace FileFuncs {

// The longest form of `path` that fits: whole, then with ever more of the folders behind the first
// part replaced by "...", then "...\name", at last the name whether it fits or not.
zor_text::CZorStringT<WCHAR>
compact_path(const zor_text::CZorStringT<WCHAR>& path,
             const std::function<bool(const zor_text::CZorStringT<WCHAR>&)>& fits);

} // namespace FileFuncs
