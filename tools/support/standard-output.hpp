// Makes what a program prints reliable: an output that could not be written is a failure.
//
// Used by velmora and velmora-evaluate; tested by tools/velmora/tests/commands-test.cpp.
#pragma once

/// To be called first. Standard streams that are closed stay unusable, so that no file that is
/// opened later takes their place; a reader that goes away is an error and not the end of the
/// process.
void prepare_standard_streams();

/// Brings what was printed to its reader. Throws std::runtime_error when it did not arrive.
void flush_output();
