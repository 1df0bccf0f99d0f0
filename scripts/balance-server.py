#!/usr/bin/env python3
"""A local balance endpoint for the measurement scripts and the session tests.

    balance-server.py KEY PORT_FILE [REQUEST_LOG]

Serves GET /user/balance on 127.0.0.1 (a free port, written to PORT_FILE)
with a one-currency body when the bearer key is KEY, and 401 otherwise, as
the real endpoint does, so every client pays for the same exchange. With
REQUEST_LOG, appends the time of each request to it.

Imported, BalanceEndpoint serves the same in a thread, with a balance the
caller may change and a count of the requests.
"""
import http.server
import json
import sys
import threading
import time


class BalanceEndpoint:
    def __init__(self, key, total="12.34", request_log=None):
        self.key = key
        self.total = total
        self.requests = 0
        owner = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def do_GET(self):
                owner.requests += 1
                if request_log:
                    with open(request_log, "a") as f:
                        f.write("%.3f\n" % time.time())
                ok = self.path == "/user/balance" and self.headers.get("Authorization") == "Bearer " + owner.key
                body = owner.body() if ok else b'{"error":"unauthorized"}'
                self.send_response(200 if ok else 401)
                self.send_header("Content-Type", "application/json")
                self.send_header("Content-Length", str(len(body)))
                self.send_header("Connection", "close")
                self.end_headers()
                self.wfile.write(body)
                self.close_connection = True

            def log_message(self, *args):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.port = self.server.server_address[1]
        self.url = "http://127.0.0.1:%d" % self.port

    def body(self):
        return json.dumps({"is_available": True, "balance_infos": [{
            "currency": "USD", "total_balance": self.total,
            "granted_balance": "0.00", "topped_up_balance": self.total}]},
            separators=(",", ":")).encode()

    def start(self):
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        return self

    def stop(self):
        self.server.shutdown()


def main():
    endpoint = BalanceEndpoint(sys.argv[1], request_log=sys.argv[3] if len(sys.argv) > 3 else None)
    with open(sys.argv[2], "w") as f:
        f.write(str(endpoint.port))
    endpoint.server.serve_forever()


if __name__ == "__main__":
    main()
