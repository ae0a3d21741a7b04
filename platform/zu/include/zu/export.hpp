// Marks what libzu offers to a linker; all else is hidden.
#pragma once

#define ZU_EXPORT __attribute__((visibility("default")))
