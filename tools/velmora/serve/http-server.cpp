#include "http-server.hpp"

#include <atomic>
#include <csignal>
#include <memory>
#include <semaphore>
#include <utility>

#include <httplib.h>

#include <velmora/error.hpp>

#include "http-interface.hpp"

namespace serve {

namespace {

constexpr std::size_t kThreads = 32;  // connections that are answered at once
constexpr std::size_t kMostConnections =
    64;  // accepted at once; further ones wait in the kernel's queue
constexpr time_t kSecondsToRead = 5;
constexpr time_t kSecondsToWrite = 5;
constexpr time_t kSecondsKeptAlive = 5;
constexpr std::size_t kRequestsOfAConnection = 100'000;

/// A pool that makes the accepting thread wait while kMostConnections are open, so that neither
/// memory nor file descriptors follow what clients do.
class BoundedPool : public httplib::TaskQueue {
 public:
  BoundedPool() : free_(static_cast<std::ptrdiff_t>(kMostConnections)), pool_(kThreads) {}

  void enqueue(std::function<void()> task) override {
    free_.acquire();
    pool_.enqueue([this, task = std::move(task)] {
      task();
      free_.release();
    });
  }
  void shutdown() override { pool_.shutdown(); }

 private:
  std::counting_semaphore<> free_;
  httplib::ThreadPool pool_;
};

std::atomic<httplib::Server*> running = nullptr;

extern "C" void stop_running_server(int) {
  if (httplib::Server* server = running.load()) {
    server->stop();
  }
}

Request request_of(const httplib::Request& request) {
  return {request.method,
          request.path,
          request.get_header_value("Host"),
          request.get_header_value("Origin"),
          request.get_header_value("Content-Type"),
          request.get_header_value("Content-Encoding"),
          request.get_header_value("Transfer-Encoding"),
          request.body};
}

void send(const Reply& reply, httplib::Response& response) {
  response.status = reply.status;
  response.set_content(reply.body, reply.content_type);
}

void set_headers(httplib::Server& server) {
  server.set_default_headers({
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src "
       "'self'; "
       "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
      {"Cache-Control", "no-store"},
  });
}

void set_limits(httplib::Server& server) {
  server.new_task_queue = [] { return new BoundedPool; };
  server.set_payload_max_length(kLargestBody);
  server.set_read_timeout(kSecondsToRead);
  server.set_write_timeout(kSecondsToWrite);
  server.set_keep_alive_timeout(kSecondsKeptAlive);
  server.set_keep_alive_max_count(kRequestsOfAConnection);
  server.set_tcp_nodelay(true);
}

void set_handlers(httplib::Server& server, Workbench& workbench, const Address& address) {
  using Handled = httplib::Server::HandlerResponse;
  server.set_pre_routing_handler(
      [&address](const httplib::Request& request, httplib::Response& response) {
        const Reply reply = refusal(request_of(request), address);
        if (reply.status == 0) {
          return Handled::Unhandled;
        }
        send(reply, response);
        response.set_header("Connection", "close");  // its body, if it has one, stays unread
        return Handled::Handled;
      });
  const auto handler = [&workbench](const httplib::Request& request, httplib::Response& response) {
    send(reply_to(request_of(request), workbench), response);
  };
  const std::string any = ".*";
  server.Get(any, handler).Post(any, handler).Put(any, handler).Patch(any, handler);
  server.Delete(any, handler).Options(any, handler);
  // What the transport refuses by itself: malformed request lines, bodies that are too large, ...
  server.set_error_handler(
      httplib::Server::Handler([](const httplib::Request&, httplib::Response& response) {
        if (response.body.empty()) {
          send(error_reply(response.status, "the request could not be read"), response);
        }
      }));
  server.set_exception_handler(
      [](const httplib::Request&, httplib::Response& response, std::exception_ptr) {
        send(error_reply(500, "the server could not answer"), response);
      });
}

int listen_on(httplib::Server& server, const ServerOptions& options) {
  const int port = options.port == 0 ? server.bind_to_any_port(options.host)
                   : server.bind_to_port(options.host, options.port) ? options.port
                                                                     : -1;
  if (port < 0) {
    throw velmora::Error("cannot listen on " + options.host + ":" + std::to_string(options.port) +
                         ": is another program using the port? Choose one with --port.");
  }
  return port;
}

}  // namespace

void serve_until_stopped(Workbench& workbench, const ServerOptions& options,
                         const std::function<void(int port)>& ready) {
  httplib::Server server;
  set_limits(server);
  set_headers(server);
  const Address address{options.host, listen_on(server, options)};
  set_handlers(server, workbench, address);
  running = &server;
  std::signal(SIGINT, stop_running_server);
  std::signal(SIGTERM, stop_running_server);
  ready(address.port);
  server.listen_after_bind();
  running = nullptr;
}

}  // namespace serve
