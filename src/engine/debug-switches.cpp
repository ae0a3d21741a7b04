#include <velmora/debug.hpp>

namespace VX::Dialog {

bool DEBUG = false;
bool DEBUGAPP = false;

}  // namespace VX::Dialog
