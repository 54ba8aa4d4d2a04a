// tests/zorsys/die_now.h: the end of a process that nothing of it sees coming.
#pragma once

[[noreturn]] void die_now();
