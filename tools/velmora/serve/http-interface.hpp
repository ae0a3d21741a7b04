// The HTTP interface of `velmora serve`: requests to replies, without a socket.
//
// Used by http-server.cpp, which adds the transport. The page and hosts in other languages speak
// this interface; page/openapi.yaml describes it. Tested by
// tools/velmora/tests/serve_transport_test.py and fuzz/http-interface.cpp.
#pragma once

#include <string>
#include <vector>

#include "workbench.hpp"

namespace serve {

/// What a reply depends on. Header values are empty when the header is missing.
struct Request {
  std::string method;  ///< "GET", "POST", ...
  std::string path;    ///< without the query part
  std::string host;
  std::string origin;
  std::string content_type;
  std::string content_encoding;
  std::string transfer_encoding;
  std::string body;
};

struct Reply {
  int status = 200;
  std::string content_type;
  std::string body;
};

/// Names under which the server may be addressed, as "name:port" and, for names alone, as "name".
struct Address {
  std::string host;  ///< what the server listens on
  int port = 0;
};

/// Sentences of more bytes than this are refused.
inline constexpr std::size_t kLongestSentence = 2000;
/// Bodies of more bytes than this are refused: the longest sentence with every byte escaped, and
/// room.
inline constexpr std::size_t kLargestBody = 16 * 1024;

/// {"error": text} under a status.
Reply error_reply(int status, const std::string& text);

/// The refusal of a request that must not be answered whatever it asks for, to be given before its
/// body is read, or status 0: a Host header that is not this server's (a page from elsewhere can
/// rename its address to loopback, but not the header), an Origin of another site, a body that
/// comes in chunks or compressed (its size is not known).
Reply refusal(const Request& request, const Address& address);

/// The reply to a request that refusal() lets through. Nothing is thrown for a bad request: it is a
/// reply of 400, 404, 405, 413 or 415 with a JSON error. Safe from any thread.
Reply reply_to(const Request& request, Workbench& workbench);

}  // namespace serve
