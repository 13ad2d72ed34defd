"""The formats that pages put their films and sounds in."""

from harness import ProgramTest, main

TYPES = ['video/mp4; codecs="avc1.42E01E, mp4a.40.2"', 'audio/mp4; codecs="mp4a.40.2"', "audio/mpeg", 'video/webm; codecs="vp8"',
         'audio/ogg; codecs="vorbis"']


class Media(ProgramTest):
    def test_the_usual_codecs_are_there(self):
        page = self.page("/", f"<script>const film = document.createElement('video');"
                              f"document.title = {TYPES}.map(type => film.canPlayType(type) || 'no').join(' ')</script>")
        program = self.start(page)
        program.wait_title(" ".join(["probably", "probably", "maybe", "probably", "probably"]))


main()
