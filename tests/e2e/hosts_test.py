"""Pages of several hosts, plain and over TLS, and what becomes of certificates that can't be trusted."""

from harness import ProgramTest, main, wait_for
from hosts import EXPIRED, UNKNOWN, WRONG_NAME, Hosts


class SeveralHosts(ProgramTest):
    def test_only_a_certificate_that_can_be_trusted_shows_its_page(self):
        bad = {"unknown.test": UNKNOWN, "expired.test": EXPIRED, "other.test": WRONG_NAME}
        hosts = Hosts({f"https://{host}/": f"<title>Page of {host}</title>" for host in (*bad, "bank.test")},
                      tls=True, certificates=bad)
        self.addCleanup(hosts.close)
        program = self.start(hosts.page("http://plain.test/", "<title>Plain page</title>"), proxy=hosts.proxy)
        program.wait_title("Plain page")
        program.type_address("https://bank.test/")
        program.wait_title("Page of bank.test")
        for host in bad:
            with self.subTest(host):
                before = program.title
                program.type_address(f"https://{host}/")
                wait_for(lambda: program.title != before, "another page")
                self.assertNotEqual(program.title, f"Page of {host}")
                self.assertNotIn(f"https://{host}/", hosts.requests)
                program.type_address("http://plain.test/")
                program.wait_title("Plain page")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
