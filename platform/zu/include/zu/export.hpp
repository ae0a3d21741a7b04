// Marks what libzu offers to a linker; all else is hidden.
#pragma once

/// Visible to a linker.
#define ZU_EXPORT __attribute__((visibility("default")))
