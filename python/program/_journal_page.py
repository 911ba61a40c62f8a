"""A journal as one HTML file of pictures, which any browser plays without a server."""

from __future__ import annotations

import base64
import html
import json
import tempfile
from pathlib import Path

import hyxOSG
from _hyx_extras.whole_files import whole_file

MOST_PICTURES = 1800  # a minute and a half at 20 a second; longer journals get fewer a second

PAGE = """<!doctype html>
<meta charset="utf-8">
<title>%(title)s</title>
<style>
body { margin: 0; background: #222; color: #ddd; font: 14px sans-serif; text-align: center }
img { display: block; margin: 0 auto; max-width: 100vw; max-height: calc(100vh - 3em) }
#controls { display: flex; gap: 1em; align-items: center; padding: .5em 1em; max-width: 60em; margin: auto }
#place { flex: 1 }
</style>
<img id="picture" alt="%(title)s">
<div id="controls">
<button id="play">Pause</button>
<input id="place" type="range" min="0" value="0" aria-label="Place">
<span id="time"></span>
<select id="speed" aria-label="Speed"><option>0.1<option>0.25<option>0.5<option selected>1<option>2<option>4</select>
<label><input id="loop" type="checkbox" checked> loop</label>
</div>
<script>
const pictures = %(pictures)s, times = %(times)s;
const part = id => document.getElementById(id), last = pictures.length - 1;
let now = times[0], playing = true, before = null;
function show(index) {
  part('picture').src = 'data:image/jpeg;base64,' + pictures[index];
  part('place').value = index;
  part('time').textContent = times[index].toFixed(2) + ' s';
}
function indexAt(time) {
  let low = 0, high = last;
  while (low < high) {
    const middle = (low + high + 1) >> 1;
    if (times[middle] <= time) low = middle; else high = middle - 1;
  }
  return low;
}
function play(wanted) {
  playing = wanted;
  part('play').textContent = playing ? 'Pause' : 'Play';
  if (playing && now >= times[last]) now = times[0];
}
function frame(stamp) {
  if (playing && before !== null) {
    now += (stamp - before) / 1000 * Number(part('speed').value);
    if (now > times[last]) {
      if (part('loop').checked) now = times[0]; else { now = times[last]; play(false); }
    }
    show(indexAt(now));
  }
  before = stamp;
  requestAnimationFrame(frame);
}
part('place').max = last;
part('place').oninput = event => { play(false); now = times[event.target.value]; show(Number(event.target.value)); };
part('play').onclick = () => play(!playing);
document.onkeydown = event => {
  const step = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
  if (event.target.id === 'place' || (!step && event.key !== ' ')) return;
  event.preventDefault();
  if (!step) return play(!playing);
  const index = Math.min(last, Math.max(0, indexAt(now) + step));
  play(false);
  now = times[index];
  show(index);
};
show(0);
requestAnimationFrame(frame);
</script>
"""


def write_page(app: hyxOSG.ExampleApplication, path: str, rate: float) -> int:
    """Writes the journal that `app` plays as a page of `rate` pictures a recorded second, a JPEG each, seen by the
    application's camera. Returns how many there are. OSError where the page cannot be written.
    """
    journal = app.getJournal()
    start, end = journal.getStartTime(), journal.getEndTime()
    count = max(1, min(MOST_PICTURES, round((end - start) * rate) + 1, journal.getNumStates()))
    pictures, times = [], []
    with tempfile.TemporaryDirectory() as folder:
        picture = Path(folder, "picture.jpg")
        for index in range(count):
            time = start + (end - start) * index / max(1, count - 1)
            app.goToTime(time)
            app.takeScreenShot(str(picture))
            pictures.append(base64.b64encode(picture.read_bytes()).decode())
            times.append(round(time, 4))
    title = html.escape(Path(app.getJournalPlaybackPath()).name)
    text = PAGE % {"title": title, "pictures": json.dumps(pictures), "times": json.dumps(times)}
    with whole_file(path) as place:
        place.write_text(text, encoding="utf-8")
    return count
