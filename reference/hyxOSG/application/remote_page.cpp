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
aside { width: 336px; padding: 16px; background: #20242b; border-left: 1px solid #2d333c; overflow: auto; }
h1 { margin: 0; font-size: 18px; }
#state { margin: 0 0 14px; color: #8e99a8; }
#state.live::before { content: "\25cf\a0 "; color: #52b788; }
#buttons { display: grid; grid-template-columns: 1fr 1fr; gap: 6px; }
button, input { font: inherit; color: inherit; background: #2c323b; border: 1px solid #3b434f; border-radius: 5px; padding: 6px; }
button { cursor: pointer; }
button:hover { background: #38404b; }
label { display: flex; justify-content: space-between; align-items: center; margin-top: 8px; }
input { width: 96px; text-align: right; }
table { width: 100%; margin-top: 14px; border-collapse: collapse; }
td { padding: 4px 0; border-top: 1px solid #2d333c; }
td:last-child { text-align: right; font-variant-numeric: tabular-nums; }
#details td:last-child { white-space: pre; padding-left: 8px; }
h2 { margin: 18px 0 4px; font-size: 14px; color: #8e99a8; }
.wide { width: 100%; }
#tree { max-height: 180px; overflow: auto; margin-top: 6px; }
#tree div { display: flex; gap: 6px; padding: 1px 4px; border-radius: 4px; cursor: pointer; }
#tree div.selected { background: #3d5a2c; }
#tree input { width: auto; }
#plot { width: 100%; background: #0e1013; border-radius: 5px; margin-top: 6px; }
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
<button id="debug">Shapes</button><button id="screenshot" data-here>Screenshot</button>
</div>
<label>Time <output id="time"></output></label>
<input id="seek" class="wide" type="range" step="any" min="0" max="0">
<label>Speed <input id="speed" type="number" min="0.01" step="any"></label>
<label>Time step, s <input id="timeStep" type="number" min="0" step="any"></label>
<h2>Bodies</h2>
<input id="search" class="wide" placeholder="search" style="text-align: left">
<div id="tree"></div>
<table id="details"></table>
<canvas id="plot" width="240" height="90" hidden></canvas>
<h2>Joints</h2>
<div id="joints"></div>
<h2>Run</h2>
<table id="parameters"></table>
<h2>Keys</h2>
<table id="keys"></table>
</aside>
<script>
"use strict";
const canvas = document.getElementById("picture");
const pen = canvas.getContext("2d");
// Relative to the page, which may lie behind a proxy that gives it a path.
const address = new URL("control" + location.search, location.href);
address.protocol = address.protocol.replace("http", "ws");
const socket = new WebSocket(address);
socket.binaryType = "blob";
const send = message => { if (socket.readyState === WebSocket.OPEN) socket.send(JSON.stringify(message)); };
const say = (text, live) => {
  const state = document.getElementById("state");
  state.textContent = text;
  state.classList.toggle("live", live);
};
socket.onopen = () => { say("connected", true); send({do: "list"}); send({do: "ready"}); };
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
  if (message.tree) showTree(message.tree);
  if (message.details) showDetails(message.details);
  if (message.tick) document.title = "hyxOSG " + message.tick.time.toFixed(2) + " s";
  if (message.error) say(message.error, true);
};
function show(parameters) {
  const table = document.getElementById("parameters");
  const elsewhere = ["time", "time step", "paused", "speed", "span", "keys"];
  const shown = Object.entries(parameters).filter(([name]) => !elsewhere.includes(name));
  table.replaceChildren(...shown.map(([name, value]) => {
    const row = document.createElement("tr");
    for (const text of [name, value]) row.insertCell().textContent = typeof text === "number" ? +text.toFixed(4) : text;
    return row;
  }));
  document.getElementById("pause").textContent = parameters.paused ? "Run" : "Pause";
  const step = document.getElementById("timeStep");
  if (document.activeElement !== step) step.value = +parameters["time step"].toFixed(6);
  const speed = document.getElementById("speed");
  if (document.activeElement !== speed) speed.value = +parameters.speed.toFixed(4);
  const seek = document.getElementById("seek");
  [seek.min, seek.max] = parameters.span;
  if (document.activeElement !== seek) seek.value = parameters.time;
  document.getElementById("time").textContent = parameters.time.toFixed(2) + " s";
  rows("keys", parameters.keys.map(line => [line.slice(0, 11).trim(), line.slice(11)]));
  now = parameters.time;
}
function rows(table, pairs) {
  document.getElementById(table).replaceChildren(...pairs.map(pair => {
    const row = document.createElement("tr");
    for (const text of pair) row.insertCell().textContent = text;
    return row;
  }));
}
let now = 0, tree = [], selected = null;
function showTree(bodies) { tree = bodies; drawTree(); }
function drawTree() {
  const wanted = document.getElementById("search").value.toLowerCase();
  document.getElementById("tree").replaceChildren(...tree.map((body, place) => {
    const line = document.createElement("div");
    line.dataset.place = place;
    line.classList.toggle("selected", place === selected);
    const eye = document.createElement("input");
    eye.type = "checkbox";
    eye.title = "drawn";
    eye.checked = body.drawn;
    eye.onclick = event => event.stopPropagation();
    eye.onchange = () => { body.drawn = eye.checked; send({do: "visible", body: place, on: eye.checked}); };
    line.append(eye, body.name || "#" + place);
    line.onclick = () => send({do: "select", body: place === selected ? null : place});
    line.hidden = !(body.name || "#" + place).toLowerCase().includes(wanted);
    if (line.hidden) line.style.display = "none";
    return line;
  }));
}
document.getElementById("search").oninput = drawTree;
// A zero without a sign, also what is rounded to one.
const fixed = (value, places) => (+value.toFixed(places) || 0).toFixed(places);
const number = value => value === null ? "?" : fixed(value, 2);
const vector = list => list.map(value => fixed(value, 3)).join("  ");
let plotted = [];
function showDetails(details) {
  const body = details.body;
  const place = body ? body.place : null;
  if (place !== selected) { selected = place; plotted = []; drawTree(); }
  rows("details", !body ? [] : [["name", body.name], ["mass, kg", +body.mass.toPrecision(6)], ["position, m", vector(body.position)],
    ["rotation", vector(body.rotation)], ["velocity, m/s", vector(body.velocity)],
    ["turn, rad/s", vector(body["angular velocity"])],
    ...body.forces.contacts.map(contact => ["force of " + (contact.with || "the world") + ", N", number(contact.force)]),
    ...body.forces.joints.map(joint => [`joint ${joint.name}, N and Nm`, number(joint.force) + "  " + number(joint.torque)])]);
  if (body) plot(body);
  document.getElementById("plot").hidden = !body;
  showJoints(details.joints);
}
function plot(body) {
  if (plotted.length && now <= plotted.at(-1)[0]) plotted = plotted.filter(point => point[0] < now);
  plotted.push([now, Math.hypot(...body.velocity), body.position[2]]);
  if (plotted.length > 240) plotted.shift();
  const sheet = document.getElementById("plot"), ink = sheet.getContext("2d");
  ink.clearRect(0, 0, sheet.width, sheet.height);
  [[1, "#e07a5f", "speed"], [2, "#81b29a", "height"]].forEach(([column, color, name], line) => {
    const values = plotted.map(point => point[column]);
    const low = Math.min(...values), high = Math.max(...values, low + 1e-6);
    ink.strokeStyle = ink.fillStyle = color;
    ink.fillText(`${name} ${fixed(low, 2)} to ${fixed(high, 2)}`, 4 + 120 * line, 10);
    ink.beginPath();
    values.forEach((value, i) => ink.lineTo(i, sheet.height - 4 - (value - low) / (high - low) * (sheet.height - 22)));
    ink.stroke();
  });
}
function showJoints(joints) {
  const box = document.getElementById("joints");
  if (box.childElementCount !== joints.length)
    box.replaceChildren(...joints.map(() => {
      const label = document.createElement("label");
      const slider = Object.assign(document.createElement("input"), {type: "range", step: "any"});
      const free = Object.assign(document.createElement("button"), {textContent: "free"});
      label.append(document.createElement("span"), slider, free);
      slider.oninput = () => send({do: "joint", joint: +slider.dataset.place, position: slider.valueAsNumber});
      free.onclick = () => send({do: "joint", joint: +slider.dataset.place, position: null});
      return label;
    }));
  joints.forEach((joint, i) => {
    const [name, slider, free] = box.children[i].children;
    name.textContent = `${joint.name || "#" + joint.place} ${fixed(joint.position ?? 0, 3)}`;
    slider.dataset.place = joint.place;
    slider.min = joint.lower ?? -Math.PI;
    slider.max = joint.upper ?? Math.PI;
    if (document.activeElement !== slider) slider.value = joint.position;
    free.disabled = !joint.held;
  });
}
document.getElementById("seek").oninput = event => send({do: "seek", value: event.target.valueAsNumber});
document.getElementById("speed").onchange = event => send({do: "speed", value: event.target.valueAsNumber});
document.getElementById("screenshot").onclick = () => {
  const link = document.createElement("a");
  link.download = "picture.png";
  link.href = canvas.toDataURL();
  link.click();
};
for (const button of document.querySelectorAll("#buttons button:not([data-here])"))
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
const special = {Escape: 0xff1b, ArrowLeft: 0xff51, ArrowRight: 0xff53, F1: 0xffbe, F2: 0xffbf, PageUp: 0xff55, PageDown: 0xff56, F9: 0xffc6, F12: 0xffc9};
const code = event => special[event.key] ?? (event.key.length === 1 ? event.key.codePointAt(0) : 0);
canvas.onkeydown = event => { if (code(event)) { event.preventDefault(); send({do: "key", key: code(event), down: true}); } };
canvas.onkeyup = event => { if (code(event)) send({do: "key", key: code(event), down: false}); };
</script>
</body>
</html>
)page";

} // namespace hyxOSG
