"""The parts of a dialog, found as screen readers find them, and used by mouse and keyboard as people use them."""

from gi.repository import GLib

from harness import wait_for
from inputs import click_at, key, type_text


class Widgets:
    def __init__(self, program, title, message=False):
        """`message`: a message box, which the toolkit calls by its kind."""
        import pyatspi  # connects to the session bus, which has to be there

        self.pyatspi, self.program, self.title = pyatspi, program, title
        self.message = message
        program.wait_window(title)

    def tops(self):
        for application in self.pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.program.process.pid:
                application.clear_cache()
                return [top for top in application if top is not None and
                        (top.getRole() == self.pyatspi.ROLE_ALERT if self.message else top.name == self.title)]
        return []

    def all(self, name):
        """What is on show under this name, a label's text or a part's own name, outermost first."""
        def walk(node):
            if node.name == name and node.getState().contains(self.pyatspi.STATE_SHOWING):
                yield node
            for child in node:
                if child is not None:
                    yield from walk(child)

        try:
            return [found for top in self.tops() for found in walk(top) if found.getRole() != self.pyatspi.ROLE_FRAME]
        except GLib.Error:  # what has gone meanwhile
            return []

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
        """The middle, on the screen, once it stays: a page that has just been chosen is still laid out."""
        places = []

        def stays():
            box = self.one(name).queryComponent().getExtents(self.pyatspi.DESKTOP_COORDS)
            places.append((box.x + box.width // 2, box.y + box.height // 2))
            return len(places) > 3 and len(set(places[-4:])) == 1

        wait_for(stays, f'the place of "{name}"')
        return places[-1]

    def click(self, *names):
        for name in names:
            click_at(*self.place(name))

    def fill(self, name, text):
        """Types over what stands in the field with this label."""
        box = self.field(name).queryComponent().getExtents(self.pyatspi.DESKTOP_COORDS)
        click_at(box.x + box.width // 2, box.y + box.height // 2)
        key("ctrl+a")
        type_text(text)
        wait_for(lambda: self.text(name) == text, f'"{text}" in "{name}"')

    def field(self, name):
        """The one that a label belongs to."""
        found = self.one(name)
        if found.getRole() in (self.pyatspi.ROLE_TEXT, self.pyatspi.ROLE_PASSWORD_TEXT):
            return found
        return next(relation.getTarget(0) for relation in found.getRelationSet()
                    if relation.getRelationType() == self.pyatspi.RELATION_LABEL_FOR)

    def text(self, name):
        content = self.field(name).queryText()
        return content.getText(0, content.characterCount)

    def wait_end(self):
        wait_for(lambda: self.title not in self.program.windows().values(), f'the end of "{self.title}"')
