"""Downloads: which ones are asked about, the bar below the page, and the list of them."""

import os
import shutil
import threading

from gi.repository import Gio, GLib

from bars import PageTest
from harness import main, reply, wait_for
from widgets import Widgets

LIST = "Downloads"


class Downloads(PageTest):
    def setUp(self):
        super().setUp()
        self.folder = os.path.join(os.environ["HOME"], "Downloads")
        shutil.rmtree(self.folder, ignore_errors=True)
        self.more = threading.Event()
        self.addCleanup(self.more.set)
        for name in "abcd":
            self.server.pages["/" + name] = lambda handler, name=name: self.send(handler, name + ".bin")

    def send(self, handler, name):
        """Half of a file at once, the rest when it is time."""
        handler.send_response(200)
        handler.send_header("Content-Disposition", f'attachment; filename="{name}"')
        handler.send_header("Content-Length", "200000")
        handler.end_headers()
        try:
            handler.wfile.write(b"x" * 100000)
            handler.wfile.flush()
            self.more.wait(100)
            handler.wfile.write(b"x" * 100000)
        except OSError:
            pass

    def files(self):
        return sorted(os.listdir(self.folder)) if os.path.isdir(self.folder) else []

    def bins(self):
        return [name for name in self.files() if name.endswith(".bin")]

    def test_what_nobody_pressed_for_is_asked_about(self):
        self.more.set()
        program = self.begin("<title>Pushes</title><script>setTimeout(() => { location = '/a'; fetch('/tried') }, 300)"
                             "</script>")
        self.wait_told("127.0.0.1 wants to download files.")
        self.assertEqual(self.files(), [])
        self.press("Don't Download")
        self.wait_told("wasn't downloaded: it wasn't allowed")
        self.assertEqual(self.files(), [])
        self.assertEqual(self.listed(), [], "what was refused")
        program.key("F5")
        self.wait_told("127.0.0.1 wants to download files.")
        self.press("Download")
        wait_for(lambda: self.files() == ["a.bin"], "the file")
        self.wait_told("Saved as")
        self.assertEqual(self.listed(), ["a.bin — 200.0\u00a0kB"])

    def test_each_row_has_its_progress_and_a_file_is_shown_in_its_folder(self):
        asked = self.own_file_manager()
        program = self.begin("<title>Two</title><script>let n = 0; onclick = () => location = '/' + 'ab'[n++]</script>")
        program.wait_title("Two")
        for count in (1, 2):
            self.click_page()
            wait_for(lambda count=count: len(self.bins()) == count, "a file on its way")
        program.key("ctrl+j")
        Widgets(program, LIST).one("Show in Folder")

        left, top, width, _ = wait_for(lambda: program.place(LIST, "Downloads", "table"), "the list")

        def bars():
            """Of each of the two rows, whether what is done and what isn't look different."""
            picture = self.screen.shot()
            return [picture.getpixel((left + width - 100, top + y)) != picture.getpixel((left + width - 30, top + y))
                    for y in (13, 40)]

        wait_for(lambda: bars() == [True, True], "a bar in each row")
        self.more.set()
        wait_for(lambda: self.files() == ["a.bin", "b.bin"], "both files")
        wait_for(lambda: Widgets(program, LIST).enabled("Show in Folder"), "an ended one")
        wait_for(lambda: bars() == [False, False], "the end of the bars")
        program.key("Down", "alt+f")
        wait_for(lambda: asked == [["file://" + os.path.join(self.folder, "a.bin")]], "the file, chosen in its folder")
        os.remove(os.path.join(self.folder, "a.bin"))
        program.key("alt+f")
        self.wait_told("isn't there any more")
        self.assertEqual(len(asked), 1)

    def listed(self):
        """The rows of the list of downloads."""
        self.program.key("ctrl+j")
        widgets = Widgets(self.program, LIST)
        widgets.one("Close")
        rows = [name for name in self.program.told_by("table cell") if name]
        widgets.click("Close")
        widgets.wait_end()
        return rows

    def own_file_manager(self):
        """A file manager on the session's bus; returns what it is asked to choose."""
        bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        asked = []

        def answer(_bus, _sender, _path, _interface, _method, parameters, call):
            asked.append(parameters.unpack()[0])
            call.return_value(None)

        name = "org.freedesktop.FileManager1"
        node = Gio.DBusNodeInfo.new_for_xml(f"<node><interface name='{name}'><method name='ShowItems'><arg type='as' "
                                            "direction='in'/><arg type='s' direction='in'/></method></interface></node>")
        bus.register_object("/" + name.replace(".", "/"), node.interfaces[0], answer)
        bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                      GLib.Variant("(su)", (name, 0)), None, Gio.DBusCallFlags.NONE, -1, None)
        loop = GLib.MainLoop()
        thread = threading.Thread(target=loop.run, daemon=True)
        thread.start()

        def end():
            loop.quit()
            thread.join()
            bus.close_sync(None)

        self.addCleanup(end)
        return asked

    def test_the_third_at_once_is_asked_about_and_the_bar_keeps_its_height(self):
        program = self.begin("<title>Many</title><body style='margin:0;background:lime'><script>let n = 0;"
                             "onclick = () => location = '/' + 'abcd'[n++]</script>")
        program.wait_title("Many")
        for count in (1, 2):
            self.click_page()
            wait_for(lambda count=count: len(self.bins()) == count, "a file on its way")
        self.assertIsNone(self.told("wants to download"))
        for name in "cd":
            self.click_page()
            wait_for(lambda name=name: "/" + name in self.server.requests, "the next request")
        self.wait_told("127.0.0.1 wants to download files.")
        self.assertEqual(len(self.bins()), 2)
        self.press("Download")
        wait_for(lambda: len(self.bins()) == 4, "all of them")
        self.wait_told("3 more…")
        bottom = program.rect[3]
        self.assertEqual(program.pixel(self.screen, 350, bottom - 75), (0, 255, 0), "the page, above one line")
        self.press("3 more…")
        listed = Widgets(program, LIST)
        wait_for(lambda: listed.enabled("Cancel"), "what runs")
        listed.click("Cancel")
        wait_for(lambda: len(self.bins()) == 3, "one less")
        self.more.set()
        wait_for(lambda: listed.enabled("Try Again"), "the choice to try again")
        listed.click("Try Again")
        wait_for(lambda: self.files() == ["a.bin", "b.bin", "c.bin", "d.bin"], "all four, whole")
        wait_for(lambda: listed.enabled("Open"), "an ended one")
        listed.click("Close")
        wait_for(lambda: not self.told("Saved as"), "the end of the bar", 40)
        self.assertEqual(program.close(), 0)

    def test_the_list_lasts_and_a_damaged_one_is_put_aside(self):
        self.more.set()
        home = self.home(Popups="1")
        self.program = program = self.start(self.page("/", "<title>Begin</title>"), home=home)
        program.wait_title("Begin")
        program.type_address(self.server.address + "/a")
        self.wait_told("Saved as")
        self.assertEqual(program.close(), 0)
        self.program = program = self.start(self.server.address + "/", home=home)
        program.wait_title("Begin")
        program.key("ctrl+j")
        listed = Widgets(program, LIST)
        listed.one("a.bin — 200.0\u00a0kB")
        listed.click("Close")
        self.assertEqual(program.close(), 0)
        path = os.path.join(home, "downloads.dat")
        self.assertEqual(os.stat(path).st_mode & 0o777, 0o600)
        with open(path, "wb") as file:
            file.write(b"\xff\x00[[[")
        self.program = program = self.start(self.server.address + "/", home=home)
        program.wait_title("Begin")
        program.key("ctrl+j")
        self.assertFalse(Widgets(program, LIST).enabled("Open"))
        self.assertTrue(os.path.exists(path + ".damaged"))

    def test_a_long_name_keeps_its_extension(self):
        self.server.pages["/long"] = lambda handler: reply(
            handler, b"x", headers={"Content-Disposition": f'attachment; filename="{"n" * 300}.tar.gz"'}, kind="a/b")
        program = self.begin("<title>Begin</title>")
        program.wait_title("Begin")
        program.type_address(self.server.address + "/long")
        wait_for(lambda: any(name.endswith(".tar.gz") for name in self.files()), "the file")


if __name__ == "__main__":
    main(warnings="ignore")
