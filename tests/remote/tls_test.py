#!/usr/bin/python3
"""tls_test.py VEILDOC: a service is asked over TLS only if its certificate is trusted
and made out for its address."""
import http.server
import os
import ssl
import subprocess
import sys
import tempfile
import threading


class Service(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        self.rfile.read(int(self.headers["Content-Length"]))
        self.send_response(200)
        self.end_headers()
        self.wfile.write(b"[]")

    def log_message(self, *_):
        pass


def main(veildoc):
    with tempfile.TemporaryDirectory() as folder:
        certificate, key = folder + "/certificate.pem", folder + "/key.pem"
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
             "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost",
             "-keyout", key, "-out", certificate],
            check=True, stderr=subprocess.DEVNULL)
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Service)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        server.socket = context.wrap_socket(server.socket, server_side=True,
                                            do_handshake_on_connect=False)
        server.handle_error = lambda *_: None  # of clients that do not trust it
        threading.Thread(target=server.serve_forever, daemon=True).start()
        for trusted, host, code in ((True, "localhost", 0), (False, "localhost", 4),
                                    (True, "127.0.0.1", 4)):
            environment = {**os.environ, "no_proxy": "localhost,127.0.0.1"}
            environment.pop("SSL_CERT_FILE", None)
            if trusted:
                environment["SSL_CERT_FILE"] = certificate
            url = f"https://{host}:{server.server_port}"
            ran = subprocess.run([veildoc, "anonymize", "--analyzer", "presidio=" + url],
                                 input=b"secret", capture_output=True, env=environment)
            assert ran.returncode == code, (url, trusted, ran)
            assert ran.stdout == (b"" if code else b"secret"), ran
            if code:
                assert url.encode() in ran.stderr and b"no trusted connection" in ran.stderr, ran


main(sys.argv[1])
