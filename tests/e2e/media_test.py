"""The formats that pages put their films and sounds in."""

import functools
import os
import shutil
import tempfile

from harness import ProgramTest, main, reply, run, wait_for

TYPES = ['video/mp4; codecs="avc1.42E01E, mp4a.40.2"', 'audio/mp4; codecs="mp4a.40.2"', "audio/mpeg", 'video/webm; codecs="vp8"',
         'audio/ogg; codecs="vorbis"']
FILM = """<title>Film</title><body style='margin:0;background:white'><video src=/film.mp4 preload=auto style='width:100%'></video><script>
const film = document.querySelector('video');
onclick = () => film.play();
film.onerror = () => document.title = film.error.message;
film.onended = async () => {
  const bytes = await (await fetch(film.src)).arrayBuffer();
  const sound = await new OfflineAudioContext(1, 1, 44100).decodeAudioData(bytes);
  const loudest = sound.getChannelData(0).reduce((most, now) => Math.max(most, now), 0);
  document.title = `Over at ${Math.round(film.currentTime)}, ${loudest > 0.05 ? 'a tone' : 'silence'} of ${Math.round(sound.duration)}`;
};
</script>"""


class Media(ProgramTest):
    def test_the_usual_codecs_are_there(self):
        page = self.page("/", f"<script>const film = document.createElement('video');"
                              f"document.title = {TYPES}.map(type => film.canPlayType(type) || 'no').join(' ')</script>")
        program = self.start(page)
        program.wait_title(" ".join(["probably", "probably", "maybe", "probably", "probably"]))

    def test_a_film_plays(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        path = os.path.join(folder, "film.mp4")
        # Red, then blue, with a tone: H.264 and AAC.
        run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=red:s=320x240:d=2", "-f", "lavfi", "-i", "color=blue:s=320x240:d=2",
            "-f", "lavfi", "-i", "sine=d=4", "-filter_complex", "[0][1]concat", "-c:v", "libx264", "-pix_fmt", "yuv420p",
            "-c:a", "aac", "-movflags", "+faststart", path)
        with open(path, "rb") as file:
            self.server.pages["/film.mp4"] = functools.partial(reply, body=file.read(), kind="video/mp4")
        program = self.start(self.page("/", FILM))
        program.wait_title("Film")
        self.wait_mostly(program, "red", lambda red, _, blue: red - blue)
        _, _, width, height = program.settled()
        program.click(width // 2, height // 2)
        program.wait_title("Over at 4, a tone of 4")
        self.wait_mostly(program, "blue", lambda red, _, blue: blue - red)

    def wait_mostly(self, program, name, amount):
        wait_for(lambda: amount(*program.page_pixel(self.screen)) > 150, f"a {name} picture")


main()
