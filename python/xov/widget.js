// The page's half of an interactive figure: it shows pictures that the kernel draws, and tells what the hand does. A step is
// sent when the picture of the last one is there; what happens meanwhile is put together into one.
const WHEEL_STEP = 0.8; // of the width, a notch of 100 pixels
const LEAST_BOX = 4; // pixels; a shorter drag is a click

function render({ model, el }) {
  const width = model.get("width");
  const height = model.get("height");
  const frame = document.createElement("div");
  frame.tabIndex = 0;
  frame.setAttribute("role", "img");
  frame.style.cssText = `position:relative;width:${width}px;height:${height}px;outline-offset:2px`;
  const picture = document.createElement("img");
  picture.draggable = false;
  picture.style.cssText = `width:${width}px;height:${height}px;display:block;user-select:none`;
  const box = document.createElement("div");
  box.style.cssText = "position:absolute;display:none;border:1px solid #0072b2;background:rgba(0,114,178,0.12);pointer-events:none";
  const line = document.createElement("div");
  line.style.cssText = "font:12px sans-serif;color:#555;min-height:1.4em;white-space:pre";
  frame.append(picture, box);
  el.append(frame, line);

  let waits = null; // the step that goes next
  let isBusy = false;
  let address = null;

  function send(step) {
    if (isBusy) {
      // Steps of a kind that follow each other become one.
      if (waits && waits.kind === step.kind && step.kind === "pan") {
        step.numbers = step.numbers.map((number, i) => number + waits.numbers[i]);
      } else if (waits && waits.kind === step.kind && (step.kind === "zoom" || step.kind === "amplify")) {
        step.numbers[0] *= waits.numbers[0];
      }
      waits = step;
      return;
    }
    isBusy = true;
    model.send(step);
  }

  function heard(message, buffers) {
    if (message.kind === "readout") {
      line.textContent = message.text;
      frame.setAttribute("aria-label", message.text);
      return;
    }
    if (message.kind === "error") {
      line.textContent = message.text;
      goOn();
      return;
    }
    const old = address;
    address = URL.createObjectURL(new Blob([buffers[0]], { type: "image/png" }));
    picture.src = address;
    if (old) URL.revokeObjectURL(old);
    frame.dataset.milliseconds = message.milliseconds;
    frame.dataset.pictures = Number(frame.dataset.pictures || 0) + 1;
    goOn();
  }

  function goOn() {
    isBusy = false;
    const next = waits;
    waits = null;
    if (next) send(next);
  }
  model.on("msg:custom", heard);

  function at(event) {
    const bounds = frame.getBoundingClientRect();
    return [event.clientX - bounds.left, event.clientY - bounds.top];
  }

  frame.addEventListener("wheel", (event) => {
    event.preventDefault();
    const notches = (event.deltaMode === 1 ? event.deltaY * 33 : event.deltaY || event.deltaX) / 100;
    if (event.shiftKey) send({ kind: "pan", numbers: [notches / 10, 0] });
    else if (event.ctrlKey) send({ kind: "amplify", numbers: [WHEEL_STEP ** notches, ...at(event)] });
    else send({ kind: "zoom", numbers: [WHEEL_STEP ** -notches, ...at(event)] });
  }, { passive: false });

  let from = null;
  let button = 0;
  let last = null;
  frame.addEventListener("pointerdown", (event) => {
    if (event.button > 1) return;
    event.preventDefault();
    frame.focus();
    frame.setPointerCapture(event.pointerId);
    from = last = at(event);
    button = event.button;
  });
  let toldAt = 0;
  frame.addEventListener("pointermove", (event) => {
    const now = at(event);
    if (from && button === 1) {
      send({ kind: "pan", numbers: [(last[0] - now[0]) / width, (now[1] - last[1]) / height] });
      last = now;
    } else if (from) {
      box.style.display = "block";
      box.style.left = `${Math.min(from[0], now[0])}px`;
      box.style.top = `${Math.min(from[1], now[1])}px`;
      box.style.width = `${Math.abs(now[0] - from[0])}px`;
      box.style.height = `${Math.abs(now[1] - from[1])}px`;
    } else if (event.timeStamp - toldAt > 50) {
      toldAt = event.timeStamp;
      model.send({ kind: "point", numbers: now });
    }
  });
  frame.addEventListener("pointerup", (event) => {
    const to = at(event);
    box.style.display = "none";
    if (from && button === 0 && Math.abs(to[0] - from[0]) > LEAST_BOX && Math.abs(to[1] - from[1]) > LEAST_BOX) {
      send({ kind: "box", numbers: [...from, ...to] });
    }
    from = null;
  });
  frame.addEventListener("dblclick", () => send({ kind: "back" }));
  frame.addEventListener("keydown", (event) => {
    const steps = {
      ArrowLeft: { kind: "pan", numbers: [-0.1, 0] },
      ArrowRight: { kind: "pan", numbers: [0.1, 0] },
      PageUp: { kind: "pan", numbers: [-1, 0] },
      PageDown: { kind: "pan", numbers: [1, 0] },
      "+": { kind: "zoom", numbers: [WHEEL_STEP, width / 2, height / 2] },
      "-": { kind: "zoom", numbers: [1 / WHEEL_STEP, width / 2, height / 2] },
      Home: { kind: "all" },
      Backspace: { kind: event.shiftKey ? "forward" : "back" },
    };
    if (!(event.key in steps)) return;
    event.preventDefault();
    event.stopPropagation();
    send(steps[event.key]);
  });

  send({ kind: "ratio", numbers: [window.devicePixelRatio || 1] });
  return () => {
    model.off("msg:custom", heard);
    if (address) URL.revokeObjectURL(address);
  };
}

export default { render };
