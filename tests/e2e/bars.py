"""A page in the program with what stands around it, its bars, found as screen readers find them."""

from harness import ProgramTest, wait_for
from inputs import click_at

MIDDLE = (350, 300)  # of the page, in the main window


class PageTest(ProgramTest):
    def begin(self, html, settings=None, **more):
        self.program = self.start(self.page("/", html), settings=settings or {"Popups": "1"}, **more)
        return self.program

    def click_page(self):
        self.program.click(*MIDDLE)

    def find(self, wanted):
        """The first node on show, of those that screen readers find, that `wanted` takes."""
        import pyatspi
        from gi.repository import GLib

        def look(node):
            if node.getState().contains(pyatspi.STATE_SHOWING) and wanted(node):
                return node
            return next(filter(None, (look(child) for child in node if child is not None)), None)

        try:
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and application.get_process_id() == self.program.process.pid:
                    application.clear_cache()
                    return next(filter(None, (look(top) for top in application)), None)
        except (GLib.Error, NotImplementedError, AttributeError):  # something went away while it was looked at
            pass
        return None

    def told(self, text):
        return self.find(lambda node: text in (node.name or ""))

    def wait_told(self, text):
        wait_for(lambda: self.told(text), f'the text "{text}"')

    def focused(self, name):
        import pyatspi
        node = self.find(lambda node: node.name == name)
        return bool(node and node.getState().contains(pyatspi.STATE_FOCUSED))

    def press(self, name):
        import pyatspi
        roles = (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX)

        # Not the one of that name which the skin draws on the window's frame.
        frame_ends = self.program.rect[1] + 80

        def is_it(node):
            return (node.name == name and node.getRole() in roles and
                    node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS).y > frame_ends)

        button = wait_for(lambda: self.find(is_it), f'the button "{name}"')
        place = button.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        click_at(place.x + place.width // 2, place.y + place.height // 2)
