"""The HTTP interface over sockets: python3 serve_transport_test.py PROGRAM DIALOGUES flat|growing

What a client may do wrong, many requests at once, and memory that stays flat (a sanitizer's grows). Loopback only.
"""

import concurrent.futures
import http.client
import json
import pathlib
import re
import socket
import subprocess
import sys
import unittest

PROGRAM, DIALOGUES, MEMORY = None, None, None
CONNECTIONS, REQUESTS_EACH = 16, 625


class Transport(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = subprocess.Popen([PROGRAM, "serve", "--rules", DIALOGUES / "household-enu.tsv", "--port", "0"],
                                      stdout=subprocess.PIPE, text=True)
        cls.port = int(re.search(r"http://127\.0\.0\.1:(\d+)", cls.server.stdout.readline()).group(1))

    @classmethod
    def tearDownClass(cls):
        cls.server.terminate()
        cls.server.wait(timeout=20)
        cls.server.stdout.close()

    def ask(self, method, path, body=None, **headers):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=20)
        given = {name.replace("_", "-"): value for name, value in headers.items()}
        connection.request(method, path, body, {"Content-Type": "application/json", **given})
        response = connection.getresponse()
        text = response.read()
        connection.close()
        return response, text

    def test_bad_requests_get_a_status_and_a_json_error(self):
        said = json.dumps({"sentence": "x"})
        cases = [
            (400, ("POST", "/api/match", "{"), {}),
            (400, ("POST", "/api/match", "[]"), {}),
            (400, ("POST", "/api/match", "{}"), {}),
            (400, ("POST", "/api/match", b'{"sentence": "\xff"}'), {}),
            (400, ("POST", "/api/match", json.dumps({"sentence": "x" * 2001})), {}),
            (400, ("POST", "/api/match", json.dumps({"sentence": "x", "top": 0})), {}),
            (400, ("POST", "/api/match", json.dumps({"sentence": "x", "top": 1e99})), {}),
            (400, ("POST", "/api/explain", json.dumps({"sentence": "x", "id": 2**40})), {}),
            (404, ("POST", "/api/explain", json.dumps({"sentence": "x", "id": 123456})), {}),
            (404, ("GET", "/api/evaluation"), {}),
            (404, ("GET", "/../../etc/passwd"), {}),
            (405, ("GET", "/api/match"), {}),
            (405, ("DELETE", "/"), {}),
            (413, ("POST", "/api/match", "x" * 20000), {}),
            (415, ("POST", "/api/match", said), {"Content_Type": "text/plain"}),
            (415, ("POST", "/api/match", said), {"Content_Encoding": "gzip"}),
            (411, ("POST", "/api/match", iter([said.encode()])), {}),  # sent in chunks
            (403, ("GET", "/api/status"), {"Host": "elsewhere.example"}),
            (403, ("GET", "/api/status"), {"Host": f"elsewhere.example:{self.port}"}),
            (403, ("POST", "/api/match", said), {"Origin": "http://elsewhere.example"}),
        ]
        for status, request, headers in cases:
            with self.subTest(request=request, headers=headers):
                response, text = self.ask(*request, **headers)
                self.assertEqual(response.status, status)
                self.assertIn("error", json.loads(text))

    def test_what_is_no_http_does_no_harm(self):
        for noise in (b"\0\xff\r\n\r\n", b"GET\r\n\r\n", b"POST /api/match HTTP/1.1\r\nContent-Length: -1\r\n\r\n",
                      b"GET / HTTP/1.1\r\nHost: " + b"x" * 9000 + b"\r\n\r\n"):
            with socket.create_connection(("127.0.0.1", self.port), timeout=20) as client:
                client.sendall(noise)
                client.shutdown(socket.SHUT_WR)
                client.recv(4096)
        self.assertEqual(self.ask("GET", "/api/status")[0].status, 200)

    def test_the_page_allows_no_inline_script(self):
        response, text = self.ask("GET", "/")
        policy = response.getheader("Content-Security-Policy")
        self.assertIn("default-src 'none'", policy)
        self.assertNotIn("unsafe", policy)
        self.assertNotRegex(text.decode(), r"<script(?![^>]*\bsrc=)|\son\w+=|<style|\sstyle=")

    def resident_kilobytes(self):
        status = pathlib.Path(f"/proc/{self.server.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status).group(1))

    def many_requests(self):
        body = json.dumps({"sentence": "please switch on the light in the kitchen"})
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        answers = 0
        for _ in range(REQUESTS_EACH):
            connection.request("POST", "/api/match", body, {"Content-Type": "application/json"})
            answers += json.loads(connection.getresponse().read())["matches"][0]["id"] == 101
        connection.close()
        return answers

    def all_connections(self):
        with concurrent.futures.ThreadPoolExecutor(CONNECTIONS) as clients:
            return sum(future.result() for future in [clients.submit(self.many_requests) for _ in range(CONNECTIONS)])

    def test_ten_thousand_requests_by_sixteen_connections_lose_none(self):
        self.all_connections()  # each thread has its buffers then
        before = self.resident_kilobytes()
        self.assertEqual(self.all_connections(), CONNECTIONS * REQUESTS_EACH)
        if MEMORY == "flat":
            self.assertLess(self.resident_kilobytes() - before, 4096)


if __name__ == "__main__":
    PROGRAM, DIALOGUES = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    MEMORY = sys.argv[3]
    unittest.main(argv=sys.argv[:1], verbosity=2)
