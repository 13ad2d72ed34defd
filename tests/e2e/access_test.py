"""What a screen reader finds: the drawn controls by name, role and state, and the real widgets among them."""

import contextlib

from harness import ProgramTest, main, wait_for

TOOLBAR = ["Back", "Forward", "Refresh", "Stop", "New Tab", "Remove Tab", "History", "Search"]
TITLE_BAR = ["Close", "Maximise", "Minimise"]
MENUS = ["File", "Edit", "View", "Favourites", "Launch", "Tabs", "Help"]


class ScreenReader(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Connects to the session bus of the screen that has just been made.
        global pyatspi, GLib
        import pyatspi
        from gi.repository import GLib
        cls.heard = []
        cls.events = ["object:children-changed", "object:state-changed:selected",
                      "object:property-change:accessible-name", "object:active-descendant-changed"]
        pyatspi.Registry.registerEventListener(cls.hear, *cls.events)

    @classmethod
    def tearDownClass(cls):
        pyatspi.Registry.deregisterEventListener(cls.hear, *cls.events)

    @classmethod
    def hear(cls, event):
        cls.heard.append((event.type, event.source, event.detail1, event.any_data))

    def setUp(self):
        super().setUp()
        self.heard.clear()

    def wait(self, condition, what):
        def look():
            while GLib.MainContext.default().iteration(False):
                pass
            try:
                return condition()
            except GLib.Error:  # an object went away while it was looked at
                return None

        return wait_for(look, what)

    def program(self):
        self.first = self.page("/first", "<title>First page</title><h1>The first heading</h1>"
                                         "<a href=/second style='display:block;height:900px'>Link</a>")
        self.second = self.page("/second", "<title>Second page</title>")
        program = self.start(self.first, settings={"Default": self.second})  # what a new tab shows
        program.wait_title("First page")
        self.app = self.wait(lambda: next(filter(lambda app: process_of(app) == program.process.pid,
                                                 pyatspi.Registry.getDesktop(0)), None),
                             "the program on the accessibility bus")
        return program

    def all(self, role, name=None, below=None):
        """The objects of a role, and of a name where one is given, anywhere below another."""
        found = []
        for child in below or self.app:
            if child is None:
                continue
            if child.getRole() == role and name in (None, child.name):
                found.append(child)
            found += self.all(role, name, child) if child.childCount else []
        return found

    def one(self, role, name):
        def look():
            found = self.all(role, name)
            self.assertLess(len(found), 2, f'one "{name}"')
            return found[0] if found else None

        return self.wait(look, f'a {role} called "{name}"')

    def tabs(self):
        """Names of the tabs, and which of them are selected."""
        tabs = self.all(pyatspi.ROLE_PAGE_TAB)
        return [tab.name for tab in tabs], [pyatspi.STATE_SELECTED in states(tab) for tab in tabs]

    def press(self, thing):
        action = thing.queryAction()
        self.assertEqual([action.getName(i) for i in range(action.nActions)], ["press"])
        self.assertTrue(action.doAction(0))

    def test_every_control_has_its_name_role_state_and_place(self):
        program = self.program()
        frame = self.one(pyatspi.ROLE_FRAME, "First page")
        left, top, width, height = program.rect
        for role, names in ((pyatspi.ROLE_PUSH_BUTTON, TOOLBAR + TITLE_BAR), (pyatspi.ROLE_MENU, MENUS)):
            for name in names:
                with self.subTest(name):
                    control = self.one(role, name)
                    self.assertTrue(usable() <= states(control), states(control))
                    place = control.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
                    self.assertTrue(place.width > 0 and place.height > 0)
                    self.assertTrue(left <= place.x and place.x + place.width <= left + width, place)
                    self.assertTrue(top <= place.y and place.y + place.height <= top + height, place)
        button = self.one(pyatspi.ROLE_PUSH_BUTTON, "New Tab").queryComponent()
        self.assertTrue(button.contains(left + 160, top + 60, pyatspi.DESKTOP_COORDS))
        self.assertFalse(button.contains(left + 160, top + 92, pyatspi.DESKTOP_COORDS))
        view = self.one(pyatspi.ROLE_PAGE_TAB, "First page").parent
        status = [child for child in view if child.getRole() == pyatspi.ROLE_LABEL]
        self.assertEqual(len(status), 1, "the status text")
        program.move(width // 2, height // 2)
        self.wait(lambda: status[0].name == self.second, "the address of the link under the mouse")
        self.assertEqual([view[i].getIndexInParent() for i in range(view.childCount)], list(range(view.childCount)))
        self.assertIn(frame, (view.parent, view.parent.parent))

    def test_the_page_and_the_address_field_stay_within_reach(self):
        self.program()
        document = self.one(pyatspi.ROLE_DOCUMENT_WEB, "First page")
        self.wait(lambda: self.all(pyatspi.ROLE_HEADING, "The first heading", document), "the page's heading")
        fields = [field for field in self.all(pyatspi.ROLE_TEXT) + self.all(pyatspi.ROLE_ENTRY)
                  if field.queryText().getText(0, -1) == self.first]
        self.assertEqual(len(fields), 1, "the address field")
        self.assertIn(pyatspi.STATE_EDITABLE, states(fields[0]))

    def test_pressing_by_name_opens_shows_and_removes_tabs(self):
        program = self.program()
        self.wait(lambda: self.tabs() == (["First page"], [True]), "the first tab")
        view = self.one(pyatspi.ROLE_PAGE_TAB, "First page").parent
        self.press(self.one(pyatspi.ROLE_PUSH_BUTTON, "New Tab"))
        self.wait(lambda: self.tabs() == (["First page", "Second page"], [False, True]), "a second tab, selected")
        self.wait(lambda: self.heard_of("object:property-change:accessible-name", self.all(pyatspi.ROLE_PAGE_TAB)[1]) and
                  self.heard_of("object:children-changed:add", view), "the news of it")
        self.one(pyatspi.ROLE_FRAME, "Second page")

        self.heard.clear()
        first, second = self.all(pyatspi.ROLE_PAGE_TAB)
        self.press(first)
        self.wait(lambda: self.tabs()[1] == [True, False], "the first tab, selected")
        self.wait(lambda: self.heard_of("object:state-changed:selected", first, 1) and
                  self.heard_of("object:state-changed:selected", second, 0), "the news of the selection")
        program.wait_title("First page")

        self.press(second)
        program.wait_title("Second page")
        self.press(self.one(pyatspi.ROLE_PUSH_BUTTON, "Remove Tab"))
        self.wait(lambda: self.tabs() == (["First page"], [True]), "the end of the second tab")
        self.wait(lambda: self.heard_of("object:children-changed:remove", view), "the news of its end")
        with contextlib.suppress(GLib.Error, NotImplementedError):
            self.assertFalse(second.queryAction().doAction(0), "a press on what has gone")
        self.assertEqual(self.tabs(), (["First page"], [True]))

    def test_a_menu_opens_by_its_label_and_its_rows_can_be_pressed(self):
        self.program()
        self.press(self.one(pyatspi.ROLE_MENU, "File"))
        row = self.one(pyatspi.ROLE_MENU_ITEM, "New Tab")
        self.assertTrue(usable() <= states(row), states(row))
        self.assertGreater(len(self.all(pyatspi.ROLE_MENU_ITEM)), 5)
        self.press(row)
        self.wait(lambda: self.tabs()[1] == [False, True], "a second tab")
        self.wait(lambda: not self.all(pyatspi.ROLE_MENU_ITEM), "the end of the menu")
        # A press outside an open menu ends it.
        self.press(self.one(pyatspi.ROLE_MENU, "Edit"))
        self.one(pyatspi.ROLE_MENU_ITEM, "Select All")
        self.press(self.all(pyatspi.ROLE_PAGE_TAB)[0])
        self.wait(lambda: not self.all(pyatspi.ROLE_MENU_ITEM), "the end of the menu")

    def test_the_addresses_can_be_read_row_by_row(self):
        program = self.program()
        program.type_address(self.second)
        program.wait_title("Second page")
        program.type_address(self.first)
        program.wait_title("First page")
        program.click(400, 57)
        self.heard.clear()
        program.key("Down", "Down")
        rows = self.wait(lambda: self.all(pyatspi.ROLE_TABLE_CELL), "the rows")
        self.assertEqual([row.name for row in rows], sorted([self.first, self.second]))
        self.assertIn(rows[0].parent.name, "Addresses")
        self.wait(lambda: any(event[0] == "object:active-descendant-changed" and event[3] and
                              event[3].name == self.second for event in self.heard), "the news of the row")

    def heard_of(self, kind, source, detail=None):
        return any(event[0] == kind and event[1] == source and detail in (None, event[2]) for event in self.heard)


def process_of(app):
    try:
        return app and app.get_process_id()
    except GLib.Error:  # that of an earlier test, which has ended
        return None


def states(thing):
    return set(thing.getState().getStates())


def usable():
    return {pyatspi.STATE_VISIBLE, pyatspi.STATE_SHOWING, pyatspi.STATE_ENABLED, pyatspi.STATE_SENSITIVE}


if __name__ == "__main__":
    main(warnings="ignore")
