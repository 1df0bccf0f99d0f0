#!/usr/bin/env python3
"""A local balance endpoint for the measurement scripts.

    balance-server.py KEY PORT_FILE [REQUEST_LOG]

Serves GET /user/balance on 127.0.0.1 (a free port, written to PORT_FILE)
with a fixed one-currency body when the bearer key is KEY, and 401
otherwise, as the real endpoint does, so every client pays for the same
exchange. With REQUEST_LOG, appends the time of each request to it.
"""
import http.server
import sys
import time

KEY, PORT_FILE = sys.argv[1], sys.argv[2]
LOG = sys.argv[3] if len(sys.argv) > 3 else None
BODY = (b'{"is_available":true,"balance_infos":[{"currency":"USD","total_balance":"12.34",'
        b'"granted_balance":"0.00","topped_up_balance":"12.34"}]}')


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        if LOG:
            with open(LOG, "a") as f:
                f.write("%.3f\n" % time.time())
        ok = self.path == "/user/balance" and self.headers.get("Authorization") == "Bearer " + KEY
        body = BODY if ok else b'{"error":"unauthorized"}'
        self.send_response(200 if ok else 401)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.send_header("Connection", "close")
        self.end_headers()
        self.wfile.write(body)
        self.close_connection = True

    def log_message(self, *args):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
with open(PORT_FILE, "w") as f:
    f.write(str(server.server_address[1]))
server.serve_forever()
