// Shows the picture and the parameters; sends mouse, keys and commands.
#include "reference/hyxOSG/application/remote_page.h"

namespace hyxOSG {

char const remotePage[] = R"page(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>hyxOSG</title>
<style>
:root { color-scheme: dark; }
* { box-sizing: border-box; }
body { margin: 0; height: 100vh; display: flex; background: #181b20; color: #d5dbe3; font: 14px/1.4 system-ui, sans-serif; }
main { flex: 1; min-width: 0; display: flex; align-items: center; justify-content: center; padding: 12px; }
#picture { max-width: 100%; max-height: 100%; border-radius: 6px; background: #0e1013; outline: none; cursor: grab; touch-action: none; }
#picture:focus { box-shadow: 0 0 0 2px #3d7ea6; }
aside { width: 272px; padding: 16px; background: #20242b; border-left: 1px solid #2d333c; overflow: auto; }
h1 { margin: 0; font-size: 18px; }
#state { margin: 0 0 14px; color: #8e99a8; }
#state.live::before { content: "\25cf\a0 "; color: #52b788; }
#buttons { display: grid; grid-template-columns: 1fr 1fr; gap: 8px; }
button, input { font: inherit; color: inherit; background: #2c323b; border: 1px solid #3b434f; border-radius: 5px; padding: 6px; }
button { cursor: pointer; }
button:hover { background: #38404b; }
label { display: flex; justify-content: space-between; align-items: center; margin-top: 14px; }
input { width: 96px; text-align: right; }
table { width: 100%; margin-top: 14px; border-collapse: collapse; }
td { padding: 4px 0; border-top: 1px solid #2d333c; }
td:last-child { text-align: right; font-variant-numeric: tabular-nums; }
@media (max-width: 640px) { body { flex-direction: column; } aside { width: auto; border: 0; } }
</style>
</head>
<body>
<main><canvas id="picture" tabindex="0" width="640" height="480"></canvas></main>
<aside>
<h1>hyxOSG</h1>
<p id="state">connecting</p>
<div id="buttons">
<button id="pause">Pause</button><button id="step">Step</button>
<button id="previous">Previous</button><button id="next">Next</button>
<button id="reload">Reload</button><button id="home">Home view</button>
<button id="save">Save state</button><button id="restore">Restore state</button>
</div>
<label>Time step, s <input id="timeStep" type="number" min="0" step="any"></label>
<table id="parameters"></table>
</aside>
<script>
"use strict";
const canvas = document.getElementById("picture");
const pen = canvas.getContext("2d");
const socket = new WebSocket(location.origin.replace("http", "ws") + "/control" + location.search);
socket.binaryType = "blob";
const send = message => { if (socket.readyState === WebSocket.OPEN) socket.send(JSON.stringify(message)); };
const say = (text, live) => {
  const state = document.getElementById("state");
  state.textContent = text;
  state.classList.toggle("live", live);
};
socket.onopen = () => { say("connected", true); send({do: "ready"}); };
socket.onclose = () => say("the application has ended", false);
socket.onmessage = async event => {
  if (typeof event.data !== "string") {
    const picture = await createImageBitmap(event.data);
    canvas.width = picture.width;
    canvas.height = picture.height;
    pen.drawImage(picture, 0, 0);
    send({do: "ready"});
    return;
  }
  const message = JSON.parse(event.data);
  if (message.parameters) show(message.parameters);
  if (message.tick) document.title = "hyxOSG " + message.tick.time.toFixed(2) + " s";
  if (message.error) say(message.error, true);
};
function show(parameters) {
  const table = document.getElementById("parameters");
  const shown = Object.entries(parameters).filter(([name]) => name !== "time step" && name !== "paused");
  table.replaceChildren(...shown.map(([name, value]) => {
    const row = document.createElement("tr");
    for (const text of [name, value]) row.insertCell().textContent = typeof text === "number" ? +text.toFixed(4) : text;
    return row;
  }));
  document.getElementById("pause").textContent = parameters.paused ? "Run" : "Pause";
  const step = document.getElementById("timeStep");
  if (document.activeElement !== step) step.value = +parameters["time step"].toFixed(6);
}
for (const button of document.querySelectorAll("button"))
  button.onclick = () => { say("connected", true); send({do: button.id}); };
document.getElementById("timeStep").onchange = event => send({do: "timeStep", value: event.target.valueAsNumber});
const place = event => {
  const box = canvas.getBoundingClientRect();
  return {x: (event.clientX - box.left) * canvas.width / box.width, y: (event.clientY - box.top) * canvas.height / box.height};
};
const buttons = [1, 2, 3];
canvas.onpointerdown = event => { canvas.setPointerCapture(event.pointerId); canvas.focus(); send({do: "press", button: buttons[event.button], ...place(event)}); };
canvas.onpointerup = event => send({do: "release", button: buttons[event.button], ...place(event)});
canvas.onpointermove = event => send({do: "move", ...place(event)});
canvas.onwheel = event => { event.preventDefault(); send({do: "wheel", up: event.deltaY < 0}); };
canvas.oncontextmenu = event => event.preventDefault();
const special = {Escape: 0xff1b, PageUp: 0xff55, PageDown: 0xff56, F9: 0xffc6, F12: 0xffc9};
const code = event => special[event.key] ?? (event.key.length === 1 ? event.key.codePointAt(0) : 0);
canvas.onkeydown = event => { if (code(event)) { event.preventDefault(); send({do: "key", key: code(event), down: true}); } };
canvas.onkeyup = event => { if (code(event)) send({do: "key", key: code(event), down: false}); };
</script>
</body>
</html>
)page";

} // namespace hyxOSG
