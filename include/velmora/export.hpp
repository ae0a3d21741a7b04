// Marks what the shared library offers to a linker; all else is hidden.
#pragma once

/// Visible to a linker.
#define VELMORA_EXPORT __attribute__((visibility("default")))
