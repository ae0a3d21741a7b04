// Marks what libzu offers to a linker; all else is hidden. Tested by tests/api/exported-symbols.
#pragma once

/// Visible to a linker.
#define ZU_EXPORT __attribute__((visibility("default")))
