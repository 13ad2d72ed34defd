"""Several hosts on one machine: a proxy that answers for every name itself, plain and over TLS, and asks nobody."""

import fcntl
import http.server
import os
import re
import shutil
import socket
import ssl
import struct
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


class Names:
    """Host names of this machine itself, without a proxy in between; at any port it may be answered."""

    ADDRESS, NOWHERE = "10.0.0.1", "10.99.99.99"
    SIOCSIFADDR, SIOCSIFNETMASK = 0x8916, 0x891C

    def __init__(self, *here, nowhere=()):
        """`nowhere`: names that no way leads to."""
        if not alone.in_namespaces:
            raise unittest.SkipTest("without a network namespace this machine's names are everybody's")
        # The resolver looks for nothing where a machine has no address but the one of itself.
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
            for request, address in ((self.SIOCSIFADDR, self.ADDRESS), (self.SIOCSIFNETMASK, "255.255.255.255")):
                fcntl.ioctl(any_socket, request,
                            struct.pack("16sHH4s8x", b"lo:1", socket.AF_INET, 0, socket.inet_aton(address)))
        self.file = tempfile.NamedTemporaryFile("w")
        self.file.write("127.0.0.1 localhost\n")
        self.file.writelines(f"{self.ADDRESS} {name}\n" for name in here)
        self.file.writelines(f"{self.NOWHERE} {name}\n" for name in nowhere)
        self.file.flush()
        os.chmod(self.file.name, 0o644)
        run("mount", "--bind", self.file.name, "/etc/hosts")

    def close(self):
        run("umount", "/etc/hosts")
        self.file.close()


class Talk:
    """A server that answers the first bytes of each caller as it is told; `heard` are those bytes."""

    def __init__(self, port, answer):
        self.heard, self.answer = [], answer
        self.socket = socket.create_server((Names.ADDRESS, port))
        threading.Thread(target=self.run, daemon=True).start()

    def run(self):
        while True:
            try:
                caller, _ = self.socket.accept()
            except OSError:  # closed
                return
            with caller:
                try:
                    caller.settimeout(5)
                    self.heard.append(caller.recv(65536))
                    self.answer(caller)
                except OSError:  # the browser hangs up whenever it likes
                    pass

    def close(self):
        self.socket.shutdown(socket.SHUT_RDWR)
        self.socket.close()


class Hosts:
    """Give `proxy` to Marlowick. `pages` maps whole addresses, such as "https://bank.test/", to HTML or to a function
    of the handler; `requests` are the addresses asked for, `headers` what came with the last request of each."""

    def __init__(self, pages=None, tls=False, certificates=None):
        """`certificates` maps hosts to other kinds than TRUSTWORTHY."""
        self.pages = dict(pages or {})
        self.requests, self.headers = [], {}
        self.kinds = dict(certificates or {})
        self.authority = Authority() if tls else None
        self.refused = set()  # hosts that there are no tunnels to
        self.contexts, self.lock = {}, threading.Lock()
        hosts = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"
            origin = ""  # of what comes through a tunnel

            def do_GET(self):
                address = self.origin + self.path
                hosts.requests.append(address)
                hosts.headers[address] = self.headers
                serve(self, hosts.pages.get(re.sub("//[^/]*@", "//", address).split("?")[0]))

            def do_POST(self):
                self.body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                self.do_GET()

            def do_CONNECT(self):
                host, _, port = self.path.rpartition(":")
                if not hosts.authority or port != "443" or host in hosts.refused:
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

    def change(self, host, kind):
        """Gives a host a new certificate, for the connections to come."""
        with self.lock:
            self.kinds[host] = kind
            self.contexts.pop(host, None)

    def page(self, address, html):
        """Serves a page and returns its address."""
        self.pages[address] = html
        return address

    def close(self):
        self.http.shutdown()
        self.http.server_close()
        if self.authority:
            self.authority.close()
