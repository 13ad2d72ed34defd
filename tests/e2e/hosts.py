"""Several hosts on one machine: a proxy that answers for every name itself, plain and over TLS, and asks nobody."""

import http.server
import os
import shutil
import ssl
import tempfile
import threading
import unittest

import alone
from harness import reply, run, serve

TRUSTED = "/etc/ssl/certs/ca-certificates.crt"  # what the engine's TLS takes for trustworthy
# Kinds of certificates: what `openssl x509` is told besides.
TRUSTWORTHY, UNKNOWN, EXPIRED, WRONG_NAME = "trustworthy", "unknown", "expired", "wrong name"


class Authority:
    """Makes certificates for hosts; trusted by this run alone."""

    def __init__(self):
        if not alone.in_namespaces:
            raise unittest.SkipTest("without a mount namespace no certificate of ours can be trusted")
        self.folder = tempfile.mkdtemp(prefix="authority-")
        for name in ("trusted", "other"):
            self.openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                         "-keyout", f"{name}.key", "-out", f"{name}.crt", "-days", "30", "-subj", f"/CN=Test {name}")
        run("mount", "--bind", os.path.join(self.folder, "trusted.crt"), TRUSTED)

    def openssl(self, *arguments):
        run("openssl", *arguments, cwd=self.folder)

    def context(self, host, kind):
        """A server's side of TLS for a host."""
        named = "elsewhere.test" if kind == WRONG_NAME else host
        by = "other" if kind == UNKNOWN else "trusted"
        with open(os.path.join(self.folder, f"{host}.names"), "w") as file:
            file.write(f"subjectAltName=DNS:{named}\n")
        self.openssl("req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                     "-keyout", f"{host}.key", "-out", f"{host}.csr", "-subj", f"/CN={named}")
        self.openssl("x509", "-req", "-in", f"{host}.csr", "-CA", f"{by}.crt", "-CAkey", f"{by}.key", "-CAcreateserial",
                     "-extfile", f"{host}.names", "-out", f"{host}.crt", "-days", "-1" if kind == EXPIRED else "20")
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(*(os.path.join(self.folder, f"{host}.{end}") for end in ("crt", "key")))
        return context

    def close(self):
        run("umount", TRUSTED)
        shutil.rmtree(self.folder)


class Hosts:
    """Give `proxy` to Marlowick. `pages` maps whole addresses, such as "https://bank.test/", to HTML or to a function
    of the handler; `requests` are the addresses asked for, `headers` what came with the last request of each."""

    def __init__(self, pages=None, tls=False, certificates=None):
        """`certificates` maps hosts to other kinds than TRUSTWORTHY."""
        self.pages = dict(pages or {})
        self.requests, self.headers = [], {}
        self.kinds = certificates or {}
        self.authority = Authority() if tls else None
        self.contexts, self.lock = {}, threading.Lock()
        hosts = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"
            origin = ""  # of what comes through a tunnel

            def do_GET(self):
                address = self.origin + self.path
                hosts.requests.append(address)
                hosts.headers[address] = self.headers
                serve(self, hosts.pages.get(address.split("?")[0]))

            def do_POST(self):
                self.body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                self.do_GET()

            def do_CONNECT(self):
                host, _, port = self.path.rpartition(":")
                if not hosts.authority or port != "443":
                    reply(self, "", 502)
                    return
                self.send_response(200)
                self.end_headers()
                try:
                    self.connection = hosts.context(host).wrap_socket(self.connection, server_side=True)
                except OSError:  # the browser doesn't like the certificate
                    self.close_connection = True
                    return
                self.origin = f"https://{host}"
                self.setup_streams()

            def setup_streams(self):
                self.rfile = self.connection.makefile("rb")
                self.wfile = self.connection.makefile("wb", buffering=0)
                self.close_connection = False

            def log_message(self, *_):
                pass

        class Proxy(http.server.ThreadingHTTPServer):
            daemon_threads = True

            def handle_error(self, *_):  # the browser hangs up whenever it likes
                pass

        self.http = Proxy(("127.0.0.1", 0), Handler)
        threading.Thread(target=self.http.serve_forever, daemon=True).start()
        self.proxy = f"http://127.0.0.1:{self.http.server_address[1]}"

    def context(self, host):
        with self.lock:
            if host not in self.contexts:
                self.contexts[host] = self.authority.context(host, self.kinds.get(host, TRUSTWORTHY))
            return self.contexts[host]

    def page(self, address, html):
        """Serves a page and returns its address."""
        self.pages[address] = html
        return address

    def close(self):
        self.http.shutdown()
        self.http.server_close()
        if self.authority:
            self.authority.close()
