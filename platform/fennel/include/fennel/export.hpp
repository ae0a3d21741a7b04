// Marks what libfennel offers to a linker; all else is hidden. Tested by
// tests/api/exported-symbols.
#pragma once

/// Visible to a linker.
#define FENNEL_EXPORT __attribute__((visibility("default")))
