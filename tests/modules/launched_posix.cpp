#include "tests/modules/launched.h"

int main(int argc, char** argv)
{
    return run_launched(std::vector<std::string>(argv + 1, argv + argc));
}
