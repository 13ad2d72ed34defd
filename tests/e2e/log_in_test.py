"""A server that wants a name and a password: who asks, over what, and what becomes of the answers."""

import base64

from bars import PageTest
from harness import click_at, main, reply, type_text, wait_for
from hosts import Hosts

GOOD = "Basic " + base64.b64encode(b"me:right").decode()
REALM = "bank.test asks for your card"


class LogIn(PageTest):
    def guarded(self, handler):
        if handler.headers.get("Authorization") == GOOD:
            return reply(handler, "<title>Inside</title>")
        return reply(handler, "<title>Not you</title>", 401, {"WWW-Authenticate": f'Basic realm="{REALM}"'})

    def visit(self, address, **pages):
        self.hosts = Hosts({"http://evil.test/": self.guarded, "http://evil.test/part": self.guarded,
                            "http://news.test/": "<title>News</title><body><iframe src='http://evil.test/part'></iframe>"})
        self.addCleanup(self.hosts.close)
        self.program = self.start("about:blank", proxy=self.hosts.proxy, settings={"Default": "about:blank"})
        self.program.wait_title("about:blank")
        self.program.type_address(address)
        return self.program

    def enter(self, name, password):
        import pyatspi

        def field(label):
            return wait_for(lambda: self.find(lambda node: node.name == label and node.getRole() in
                                              (pyatspi.ROLE_TEXT, pyatspi.ROLE_PASSWORD_TEXT)), f'the field "{label}"')

        for label, text in (("Name", name), ("Password", password)):
            place = field(label).queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            click_at(place.x + place.width // 2, place.y + place.height // 2)
            wait_for(lambda: self.focused(label), f'the keyboard in "{label}"')
            self.program.key("ctrl+a")
            type_text(text)
        self.program.key("Return")

    def test_the_server_that_asks_is_named(self):
        program = self.visit("http://evil.test/")
        who = "evil.test asks for a name and a password."
        self.wait_told(who)
        # What it says of itself stands apart, as its own words.
        self.wait_told(f'The server says: "{REALM}"\nWhat you enter is sent without encryption.')
        self.enter("me", "wrong")
        self.wait_told("The name or the password was wrong.")
        self.enter("me", "right")
        program.wait_title("Inside")
        self.assertEqual(self.hosts.headers["http://evil.test/"]["Authorization"], GOOD)
        self.assertIsNone(self.told(who))
        self.assertEqual(program.close(), 0)

    def test_a_no_shows_the_servers_own_page_and_leaving_takes_the_question_away(self):
        program = self.visit("http://evil.test/")
        who = "asks for a name and a password."
        self.wait_told(who)
        self.press("Cancel")
        program.wait_title("Not you")
        self.assertIsNone(self.told(who))
        # Of a part of a page, both are named; and what was refused isn't asked again.
        program.type_address("http://news.test/")
        self.wait_told("evil.test, for a part of the page of news.test, asks for a name and a password.")
        program.type_address("about:blank")
        wait_for(lambda: not self.told(who), "the end of the question")
        program.wait_title("about:blank")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
