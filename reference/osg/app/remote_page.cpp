/// Shows the picture and the parameters; sends mouse, keys and commands.
#include "reference/osg/app/remote_page.h"

namespace hyxOSG {

const char remotePage[] = R"page(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>hyxOSG</title>
<style>
body { margin: 0; background: #20242a; color: #dde2e8; font: 14px sans-serif; }
#picture { display: block; max-width: 100%; outline: none; cursor: grab; }
#bar { padding: 8px; }
button { font: inherit; padding: 4px 12px; margin-right: 6px; }
table { border-collapse: collapse; margin: 8px; }
td { padding: 2px 12px 2px 0; }
</style>
</head>
<body>
<canvas id="picture" tabindex="0" width="640" height="480"></canvas>
<div id="bar">
<button id="pause">Pause</button><button id="step">Step</button><button id="reload">Reload</button><button id="home">Home</button>
<span id="state">connecting</span>
</div>
<table id="parameters"></table>
<script>
"use strict";
const canvas = document.getElementById("picture");
const pen = canvas.getContext("2d");
const socket = new WebSocket(location.origin.replace("http", "ws") + "/control" + location.search);
socket.binaryType = "blob";
const send = message => { if (socket.readyState === WebSocket.OPEN) socket.send(JSON.stringify(message)); };
const say = text => { document.getElementById("state").textContent = text; };
socket.onopen = () => { say("connected"); send({do: "ready"}); };
socket.onclose = () => say("the application has ended");
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
  if (message.error) say(message.error);
};
function show(parameters) {
  const table = document.getElementById("parameters");
  table.replaceChildren(...Object.entries(parameters).map(([name, value]) => {
    const row = document.createElement("tr");
    for (const text of [name, value]) row.insertCell().textContent = typeof text === "number" ? +text.toFixed(4) : text;
    return row;
  }));
  document.getElementById("pause").textContent = parameters.paused ? "Run" : "Pause";
}
for (const name of ["pause", "step", "reload", "home"])
  document.getElementById(name).onclick = () => send({do: name});
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

}  // namespace hyxOSG
