// A library that faults while it is loaded.
namespace {

struct Faults
{
    Faults() { *place = 1; }
    int* volatile place = nullptr;
};
Faults faults;

} // namespace
