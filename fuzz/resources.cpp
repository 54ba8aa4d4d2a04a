// Files of string resources: whatever they hold, they load or are refused, and texts come whole.
#include "fuzz/input_file.h"
#include "fuzz/properties.h"
#include "zorutils/zortext/resource_modules.h"

void zor_fuzz::resources(const unsigned char* data, size_t size)
{
    // Modules stay loaded to the end of the process, so the engine sees each input as a new file.
    const InputFile input(".res");
    const HINSTANCE module = zor_text::LoadResourceModule(input.write(bytes_of(data, size)));
    if (module == nullptr)
        return;
    require(zor_text::AddResourceModule(module, 0), "a module that was loaded can be listed");
    for (const unsigned int id : {0u, 1u, 15u, 16u, 100u, 1000u, 65535u}) {
        zor_test::Wide text;
        const bool found = text.LoadStringW(id) != 0;
        require(found || text.IsEmpty(), "no text is left of a number that isn't there");
    }
    require(zor_text::RemoveResourceModule(module), "a listed module can be taken off");
}
