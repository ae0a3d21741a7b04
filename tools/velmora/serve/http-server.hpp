// The transport of `velmora serve`: sockets, threads and limits around http-interface.hpp.
// Tested by tools/velmora/tests/serve_transport_test.py.
#pragma once

#include <functional>
#include <string>

#include "workbench.hpp"

namespace serve {

struct ServerOptions {
  std::string host = "127.0.0.1";
  int port = 8765;  ///< 0: any free port
};

/// Answers requests until SIGINT or SIGTERM. `ready` is called once, with the port, when
/// connections are accepted. Throws velmora::Error when the address can't be listened on.
void serve_until_stopped(Workbench& workbench, const ServerOptions& options,
                         const std::function<void(int port)>& ready);

}  // namespace serve
