# SPDX-License-Identifier: Apache-2.0
"""Serves on 127.0.0.1 what is in the folder that is its argument ("/file/NAME"), and any answer that a path asks for:
"/once/STATUS/HEADER:VALUE"; "/slow/..." comes after a while, "/hold/..." does not close the connection, "/endless/..."
does not end, and "/raw/FIRST/MORE" is FIRST and then MORE, again and again unless it is empty. Puts a certificate
authority (ca.pem) into the folder, writes the paths it sees to "seen", and prints the ports of three servers: HTTP, as
a proxy too; HTTPS for localhost; the same with an expired certificate."""
import contextlib
import http.server
import ssl
import subprocess
import sys
import threading
import time
import urllib.parse


def openssl(arguments, data=None):
    return subprocess.run(["openssl", *arguments.split()], input=data, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=True, cwd=sys.argv[1]).stdout


class Handler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        with open(sys.argv[1] + "/seen", "a") as seen:
            seen.write(f"{self.path} {self.headers.get('Authorization')}\n")

    def raw(self, first, more):
        with contextlib.suppress(OSError):
            self.wfile.write(first)
            while more:
                self.wfile.write(more * 4096)

    def do_GET(self):
        verb, what, header, *_ = *urllib.parse.urlsplit(self.path).path[1:].split("/", 2), "X:"
        if verb == "raw":
            return self.raw(*(urllib.parse.unquote_plus(part).encode() for part in (what, header)))
        if verb == "slow":
            time.sleep(0.2)
        self.send_response(200 if verb == "file" else int(what))
        self.send_header(*header.split(":", 1))
        self.end_headers()
        body = open(f"{sys.argv[1]}/{what}", "rb").read() if verb == "file" else b"body"
        with contextlib.suppress(OSError):
            self.wfile.write(body)
            while verb == "endless":
                self.wfile.write(bytes(65536))
            if verb == "hold":
                self.rfile.read(1)


def serve(days=None):
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    if days:
        request = openssl(f"req -new {KEY} key{days} -subj /CN=x -addext subjectAltName=DNS:localhost")
        openssl(f"x509 -req -CA ca.pem -CAkey ca.key -CAcreateserial -days {days} -copy_extensions copyall"
                f" -out pem{days}", request)
        tls = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        tls.load_cert_chain(f"{sys.argv[1]}/pem{days}", f"{sys.argv[1]}/key{days}")
        server.socket = tls.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
    threading.Thread(target=server.serve_forever).start()
    return server.server_port


KEY = "-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout"
openssl(f"req -x509 {KEY} ca.key -out ca.pem -days 2 -subj /CN=ca")
print(serve(), serve(2), serve(-1), flush=True)
