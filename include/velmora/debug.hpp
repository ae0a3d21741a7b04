// Switches for the developer's dumps of the warm start. Tested by tests/engine/warm-start-test.cpp.
#pragma once

#include <velmora/export.hpp>

namespace VX::Dialog {

/// True: the warm start of a Velmora engine writes its tables to standard output. False when the
/// library is loaded; nothing in the library sets it. Set it while no load is running.
extern VELMORA_EXPORT bool DEBUG;

/// The same for the engine behind AppModel.
extern VELMORA_EXPORT bool DEBUGAPP;

}  // namespace VX::Dialog
