// The Eigen types that cross the border between a host and the library.
//
// A host built for wider vector registers would align matrices differently, and a matrix that one
// side allocates and the other frees would then corrupt the heap. Every header with a matrix in it
// comes through here, so such a host fails to compile and not at run time. The CMake package and
// the pkg-config file pass EIGEN_MAX_ALIGN_BYTES=16 on to the host. Tested by
// tests/install/install-test.
#pragma once

#include <Eigen/Core>
#include <Eigen/SparseCore>

static_assert(EIGEN_DEFAULT_ALIGN_BYTES == 16,
              "libvelmora is built with 16-byte aligned matrices: compile with "
              "-DEIGEN_MAX_ALIGN_BYTES=16");
