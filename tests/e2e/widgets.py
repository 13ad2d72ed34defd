"""The parts of a dialog, found as screen readers find them, and used by mouse and keyboard as people use them."""

from harness import wait_for
from inputs import click_at, key, type_text


class Widgets:
    def __init__(self, program, title):
        import pyatspi  # connects to the session bus, which has to be there

        self.pyatspi, self.program, self.title = pyatspi, program, title
        program.wait_window(title)

    def tops(self):
        for application in self.pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.program.process.pid:
                application.clear_cache()
                return [top for top in application if top is not None and top.name == self.title]
        return []

    def all(self, name):
        """What is on show under this name, a label's text or a part's own name, outermost first."""
        def walk(node):
            if node.name == name and node.getState().contains(self.pyatspi.STATE_SHOWING):
                yield node
            for child in node:
                if child is not None:
                    yield from walk(child)

        return [found for top in self.tops() for found in walk(top) if found.getRole() != self.pyatspi.ROLE_FRAME]

    def one(self, name):
        return wait_for(lambda: self.all(name), f'"{name}" in "{self.title}"')[-1]

    def shows(self, name):
        return bool(self.all(name))

    def has(self, name, state):
        return self.one(name).getState().contains(state)

    def checked(self, name):
        return self.has(name, self.pyatspi.STATE_CHECKED)

    def enabled(self, name):
        return self.has(name, self.pyatspi.STATE_SENSITIVE)

    def place(self, name):
        """The middle, on the screen."""
        box = self.one(name).queryComponent().getExtents(self.pyatspi.DESKTOP_COORDS)
        return box.x + box.width // 2, box.y + box.height // 2

    def click(self, *names):
        for name in names:
            click_at(*self.place(name))

    def fill(self, name, text):
        """Types over what stands in a field."""
        self.click(name)
        key("ctrl+a")
        type_text(text)
        wait_for(lambda: self.text(name) == text, f'"{text}" in "{name}"')

    def text(self, name):
        content = self.one(name).queryText()
        return content.getText(0, content.characterCount)

    def wait_end(self):
        wait_for(lambda: self.title not in self.program.windows().values(), f'the end of "{self.title}"')
