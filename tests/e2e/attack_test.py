"""Pages that try to get out of their place: into the program's own pages, past the address, at other sites' sources."""

import time

from harness import ProgramTest, main, wait_for
from hosts import EXPIRED, Hosts
from inputs import run

MIDDLE = (350, 300)
CLIPBOARD = """
import gi
gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gtk
print(Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).wait_for_text() or "")
"""


class Attacks(ProgramTest):
    def begin(self, pages, first, tls=False, certificates=None, **settings):
        self.hosts = Hosts(pages, tls=tls, certificates=certificates)
        self.addCleanup(self.hosts.close)
        self.program = self.start(first, proxy=self.hosts.proxy, settings={"Popups": "2", **settings})
        return self.program

    def told_by_page(self, what):
        return [address for address in self.hosts.requests if f"/told/{what}" in address]

    def wait_told(self, what):
        wait_for(lambda: self.told_by_page(what), f"the page's word of {what}")

    def typed_address(self):
        """What the address field says, as a user would copy it."""
        self.program.key("ctrl+l", "ctrl+a", "ctrl+c")
        text = wait_for(lambda: run("/usr/bin/python3", "-c", CLIPBOARD), "the address in the clipboard")
        self.program.key("Escape")
        return text

    def test_an_opener_reaches_no_own_page(self):
        # The popup's host doesn't answer, so the popup shows an error page.
        script = """
          <title>Opener</title><body><script>
          const tell = word => fetch('/told/' + word);
          onclick = () => {
            const w = open('https://nowhere.test/');
            setTimeout(() => {
              let seen = 'nothing';
              try { seen = w.document.body.textContent.length > 0 ? 'text' : 'empty'; } catch (e) { seen = 'barred'; }
              tell('document-' + (w.closed ? 'closed' : seen));
              for (const a of ['view-source:file:///etc/passwd', 'view-source:http://bank.test/', 'marlowick:own',
                               'marlowick-press:1']) { try { w.location = a; } catch (e) {} }
              setTimeout(() => {
                try { seen = w.document.body.textContent; } catch (e) { seen = ''; }
                tell('source-' + (seen.includes('root:') || seen.includes('Secret') ? 'read' : 'safe'));
              }, 1500);
            }, 2500);
          };
          </script>"""
        program = self.begin({"http://evil.test/": script, "http://bank.test/": "<title>Bank</title>Secret",
                              "http://evil.test/told": ""}, "http://evil.test/")
        program.wait_title("Opener")
        program.click(*MIDDLE)
        self.wait_told("document-")
        # The opener may keep an empty window that is on no screen, and nothing of the page that is.
        self.assertFalse(self.told_by_page("document-text"))
        self.wait_told("source-")
        self.assertTrue(self.told_by_page("source-safe"))
        self.assertNotIn("http://bank.test/", self.hosts.requests)
        self.assertEqual(program.close(), 0)

    def test_no_page_accepts_a_certificate(self):
        tries = """<title>Trier</title><script>
          const w = 'https://bad.test/';
          setTimeout(() => location = 'marlowick-press:1', 300);
          setTimeout(() => { const f = document.createElement('iframe'); f.src = 'marlowick-press:1';
                             document.body.append(f); }, 600);
          setTimeout(() => fetch('/told/done'), 1500);
          </script><body>"""
        program = self.begin({"http://evil.test/": tries, "https://bad.test/": "<title>Bad</title>"},
                             "http://evil.test/", tls=True, certificates={"bad.test": EXPIRED})
        program.wait_title("Trier")
        program.type_address("https://bad.test/")
        program.wait_title("This connection isn't safe")
        program.type_address("http://evil.test/?again")
        self.wait_told("done")
        program.type_address("https://bad.test/")
        program.wait_title("This connection isn't safe")
        self.assertNotIn("https://bad.test/", self.hosts.requests)
        # The user's own press goes on.
        program.click(*MIDDLE)
        program.key("Tab", "Tab", "Return")
        program.wait_title("Bad")
        self.assertEqual(program.close(), 0)

    def test_no_page_sends_anyone_to_a_source(self):
        goes = """<title>Sender</title><body><a id=a href="view-source:http://bank.test/">x</a><script>
          const go = f => { try { f(); } catch (e) {} };
          go(() => location = 'view-source:http://bank.test/');
          go(() => document.getElementById('a').click());
          const f = document.createElement('iframe'); f.src = 'view-source:http://bank.test/'; document.body.append(f);
          onclick = e => { if (e.isTrusted) fetch('/told/pressed').then(() =>
                             open('view-source:http://bank.test/')); };
          </script>"""

        def redirect(handler):
            handler.send_response(302)
            handler.send_header("Location", "view-source:http://bank.test/")
            handler.send_header("Content-Length", "0")
            handler.end_headers()

        program = self.begin({"http://evil.test/": goes, "http://evil.test/redirect": redirect,
                              "http://bank.test/": "<title>Bank</title>"}, "http://evil.test/")
        program.wait_title("Sender")
        program.click(*MIDDLE)
        self.wait_told("pressed")
        program.type_address("http://evil.test/redirect")
        time.sleep(1)
        self.assertNotIn("http://bank.test/", self.hosts.requests)
        # The user may.
        program.type_address("view-source:http://bank.test/")
        wait_for(lambda: "http://bank.test/" in self.hosts.requests, "the source that the user wants")
        self.assertEqual(program.close(), 0)

    def test_the_field_names_the_page_on_show(self):
        slow = """<title>Painter</title><body><script>
          onclick = () => { location = 'http://bank.test/slow'; setTimeout(() => fetch('/told/leaving'), 200); };
          </script>"""

        def never(handler):
            for _ in range(100):
                if self.done:
                    return
                time.sleep(0.1)

        self.done = False
        program = self.begin({"http://evil.test/": slow, "http://bank.test/slow": never}, "http://evil.test/")
        program.wait_title("Painter")
        program.click(*MIDDLE)
        self.wait_told("leaving")
        self.assertEqual(self.typed_address(), "http://evil.test/")
        self.done = True
        program.type_address("http://www.bank.test%20%20%20%20@evil.test/other")
        program.wait_title("Not here")
        self.assertEqual(self.typed_address(), "http://evil.test/other")
        program.type_address("res://x#https://www.bank.test/")
        wait_for(lambda: program.title != "Not here", "the error page")
        self.assertTrue(self.typed_address().startswith("res:"), self.typed_address())
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
