// Marks what the shared library offers to a linker; all else is hidden.
#pragma once

#define VELMORA_EXPORT __attribute__((visibility("default")))
