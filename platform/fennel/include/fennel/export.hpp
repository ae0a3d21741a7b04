// Marks what libfennel offers to a linker; all else is hidden.
#pragma once

#define FENNEL_EXPORT __attribute__((visibility("default")))
