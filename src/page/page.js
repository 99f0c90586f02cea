// Charts and maps that answer: each figure of the page has its series in elements of its own; this draws them anew at
// the width there is, and lets mouse, touch and keys move a cursor that all figures over the same points share.
"use strict";

const chartHeight = 220, mapHeights = [220, 400], letter = 7, printWidth = 680; // px; a digit of the axes; A4 without margins
const rampSteps = 9, pages = 20; // colours of a map; presses of "page down" from one end to the other
const seconds = [1, 2, 5, 10, 15, 20, 30, 60, 120, 300, 600, 900, 1200, 1800, 3600, 7200, 10800, 21600, 43200, 86400];

function fill(node, attributes, children = []) {
    for (const [name, value] of Object.entries(attributes))
        node.setAttribute(name, value);
    node.append(...children);
    return node;
}

const html = (name, attributes, ...children) => fill(document.createElement(name), attributes, children);
const shape = (name, attributes, ...children) =>
    fill(document.createElementNS("http://www.w3.org/2000/svg", name), attributes, children);
const words = (text, x, y, anchor, more) => shape("text", {x, y, "text-anchor": anchor, ...more}, text);
const inkOf = colour => ({style: `--ink:var(--${colour})`});

// Numbers begin with their lowest byte, as in the memory of every machine that browsers run on.
function bytesOf(base64) {
    const text = atob(base64), bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i)
        bytes[i] = text.charCodeAt(i);
    return bytes.buffer;
}

const known = new Map(), cursors = new Map();

function seriesOf(id) {
    const node = document.getElementById(id);
    if (node && !known.has(id)) {
        const {label, unit = "", format, decimals, colour, f32, f64} = node.dataset;
        const values = f32 === undefined ? new Float64Array(bytesOf(f64)) : new Float32Array(bytesOf(f32));
        known.set(id, {id, label, unit, colour, decimals, time: format === "time", values});
    }
    return known.get(id);
}

// 5 s, 20:00, 1:02:03
function clock(value) {
    const whole = Math.round(Math.abs(value)), sign = value < 0 ? "-" : "", two = part => String(part).padStart(2, "0");
    const hours = Math.floor(whole / 3600), minutes = Math.floor(whole / 60) % 60;
    if (whole < 60)
        return `${sign}${whole} s`;
    return sign + (hours ? `${hours}:${two(minutes)}` : minutes) + `:${two(whole % 60)}`;
}

function valueText(series, i) {
    const value = series.values[i], text = series.time ? clock(value) : value.toFixed(series.decimals ?? 1).replace(/^-(?=[0.]+$)/, "");
    return `${series.label} ${Number.isNaN(value) ? "none" : series.time ? text : `${text} ${series.unit}`}`.trim();
}

function extent(lists) {
    let low = Infinity, high = -Infinity;
    for (const list of lists)
        for (const value of list) {
            low = value < low ? value : low;
            high = value > high ? value : high;
        }
    return low <= high ? [low, high] : [0, 1];
}

function roundStep(rough) {
    const power = 10 ** Math.floor(Math.log10(rough));
    return power * ([1, 2, 5].find(step => step * power >= rough * 0.999) || 10);
}

function evenTicks(low, high, step) {
    const first = Math.ceil(low / step - 1e-9), count = Math.floor(high / step + 1e-9) - first + 1;
    return Array.from({length: count}, (_, i) => (first + i) * step);
}

// From values to pixels, with the ticks and what stands at them.
function axis([low, high], [start, end], {time, log, count = 5} = {}) {
    const measure = log ? Math.log10 : value => value, rough = (high - low) / count || 1;
    const factor = (end - start) / (measure(high) - measure(low) || 1);
    const step = time && seconds.find(one => one >= rough) || roundStep(rough);
    const digits = Math.max(0, -Math.floor(Math.log10(step) + 1e-9));
    const text = value => time ? clock(value) : value.toFixed(digits);
    const ticks = log ? seconds.filter(value => value >= low && value <= high) : evenTicks(low, high, step);
    return {low, high, start, end, ticks, text, at: value => start + (measure(value) - measure(low)) * factor};
}

// Some air beyond the values; at zero where the axis has to begin there.
function roomy([low, high], zero) {
    const from = zero ? Math.min(low, 0) : low, to = zero ? Math.max(high, 0) : high, air = (to - from) * 0.05 || 1;
    return [from < 0 || !zero ? from - air : from, to + air];
}

// Labels that would stand on one another are left out.
function bottomAxis(x, name, top, bottom) {
    const group = shape("g", {}, words(name, (x.start + x.end) / 2, bottom + 37, "middle"));
    let free = -Infinity;
    for (const tick of x.ticks) {
        const at = x.at(tick), half = x.text(tick).length * letter / 2;
        group.append(shape("path", {d: `M${at},${top}V${bottom}`, class: "grid"}));
        if (at - half >= free)
            group.append(words(x.text(tick), at, bottom + 20, "middle"));
        free = at - half >= free ? at + half + letter : free;
    }
    return group;
}

function sideAxis(y, unit, x, across, anchor) {
    const from = x + (anchor === "end" ? -6 : 6);
    return shape("g", {}, words(unit, from, y.end - 12, anchor), ...y.ticks.flatMap(tick => [
        shape("path", {d: `M${x},${y.at(tick)}h${across}`, class: "grid"}),
        words(y.text(tick), from, y.at(tick) + 4, anchor)]));
}

// The points of a curve in stretches without a gap; a column of pixels keeps its first, least, most and last: no peak
// is lost.
function stretches(xs, ys, x, y) {
    const all = [];
    let points = null, column, at, last, least, most;
    const leave = () => points?.push([at, least], [at, most], [at, last]);
    for (let i = 0; i < ys.length; ++i) {
        const px = x.at(xs[i]), py = y.at(ys[i]);
        if (Number.isNaN(px + py)) {
            leave();
            points = null;
        } else if (points && Math.round(px) === column) {
            [last, least, most] = [py, Math.min(least, py), Math.max(most, py)];
        } else {
            leave();
            if (!points)
                all.push(points = []);
            points.push([px, py]);
            [column, at, last, least, most] = [Math.round(px), px, py, py, py];
        }
    }
    leave();
    return all;
}

const pathOf = points => "M" + points.map(([x, y]) => `${x.toFixed(1)},${y.toFixed(1)}`).join("L");
const inked = (d, colour, kind) => shape("path", {d, class: kind, ...inkOf(colour)});

// A dot a pixel at the most: thousands on one another look like one.
function dots(xs, ys, x, y) {
    const all = new Set(Array.from(xs, (value, i) => `M${Math.round(x.at(value))},${Math.round(y.at(ys[i]))}h0`));
    return [...all].filter(d => !d.includes("NaN")).join("");
}

// Means of so many buckets as boxes on one another, left, right, foot and head; those below zero apart. Bars have a half.
function piles(xs, all, buckets, half) {
    const ends = Array.from({length: buckets + 1}, (_, i) => Math.floor(i * xs.length / buckets));
    const above = new Float64Array(buckets), below = new Float64Array(buckets);
    const boxes = all.map(({values}) => ends.slice(1).map((end, i) => {
        const there = values.subarray(ends[i], end).filter(value => !Number.isNaN(value));
        const mean = there.reduce((sum, value) => sum + value / there.length, 0);
        const pile = mean < 0 ? below : above, foot = pile[i];
        pile[i] += mean;
        return [xs[ends[i]] - half, xs[half ? end - 1 : Math.min(end, xs.length - 1)] + half, foot, pile[i]];
    }));
    return {boxes, range: extent([above, below])};
}

const boxPath = (boxes, x, y) => boxes.map(([left, right, foot, head]) =>
    `M${x.at(left)},${y.at(foot)}V${y.at(head)}H${x.at(right)}V${y.at(foot)}Z`).join("");

function place(node, x, y) {
    node.style.display = Number.isNaN(x + y) ? "none" : "";
    node.style.transform = `translate(${x}px,${y}px)`;
}

// An index into the points that its figures share; -1: nowhere. They follow once a frame at the most.
class Cursor {
    views = [];
    index = -1;

    move(index) {
        this.index = index;
        this.frame ??= requestAnimationFrame(() => {
            this.frame = null;
            this.views.forEach(view => view.show());
        });
    }
}

// What charts and maps have in common: their place, keys and pointer, the line of values.
class View {
    constructor(figure, x, series) {
        const name = figure.dataset.cursor || (figure.dataset.y ? "s-distance" : figure.dataset.x);
        const title = figure.querySelector("figcaption")?.textContent || series[0].label;
        cursors.set(name, this.cursor = cursors.get(name) || new Cursor());
        this.series = this.shown = series.map((one, i) => ({...one, colour: one.colour ?? i % 8}));
        Object.assign(this, {figure, x, title, width: 0, size: x.values.length});
        this.along = figure.dataset.y && seriesOf(name) || x; // what the read-out begins with
        this.plot = html("div", {class: "plot", tabindex: 0, role: "slider", "aria-label": title, "aria-valuemin": 0,
            "aria-valuemax": this.size - 1});
        this.readout = html("p", {class: "readout"});
        figure.querySelector("svg")?.remove();
        figure.append(...series.length > 1 ? [this.choices()] : [], this.plot, this.readout);
        this.cursor.views.push(this);
        for (const event of ["pointermove", "pointerdown"])
            this.plot.addEventListener(event, one => this.point(one));
        this.plot.addEventListener("keydown", event => this.press(event));
        new ResizeObserver(() => this.redraw(this.plot.clientWidth)).observe(this.plot);
    }
    redraw(width) {
        if (width === this.width || !width)
            return;
        this.width = width;
        this.plot.replaceChildren(this.draw());
        this.show();
    }
    choose(shown) {
        [this.shown, this.width] = [shown, 0];
        this.redraw(this.plot.clientWidth);
    }
    point(event) {
        const box = this.plot.getBoundingClientRect(), px = event.clientX - box.left, py = event.clientY - box.top;
        let best = 0;
        for (let i = 1; i < this.size; ++i)
            best = this.distance(i, px, py) < this.distance(best, px, py) ? i : best;
        this.cursor.move(best);
    }
    press(event) {
        const {index} = this.cursor, one = event.shiftKey ? 10 : 1, page = Math.ceil(this.size / pages);
        const steps = {ArrowRight: one, ArrowUp: one, ArrowLeft: -one, ArrowDown: -one, PageUp: page, PageDown: -page};
        const last = this.size - 1, ends = {Home: 0, End: last, Escape: -1}, step = steps[event.key];
        if (event.ctrlKey || event.altKey || event.metaKey || !(step || event.key in ends))
            return;
        event.preventDefault(); // what would scroll the page
        const from = index < 0 && step < 0 ? last + 1 : index;
        this.cursor.move(ends[event.key] ?? Math.min(last, Math.max(0, from + step)));
    }
    // Marks the point and says its values.
    show() {
        const {index} = this.cursor, series = index < 0 ? [] : [this.along, ...this.shown];
        const text = series.map(one => valueText(one, index)).join(" · ");
        this.mark(index);
        this.readout.textContent = text;
        fill(this.plot, {"aria-valuenow": Math.max(0, index), "aria-valuetext": text || "no point chosen"});
    }
}

class Chart extends View {
    choices() {
        const wanted = this.figure.dataset.shown?.split(" "), some = this.series.length > 4 ? 2 : 4;
        this.shown = this.series.filter((one, i) => wanted ? wanted.includes(one.id) : i < some);
        const many = new Set(this.series.map(one => one.unit)).size > 1;
        const named = ({label, unit}) => many && unit ? `${label}, ${unit}` : label;
        return html("fieldset", {class: "choice"}, html("legend", {}, `Shown: ${this.title}`), ...this.series.map(series => {
            const box = html("input", {type: "checkbox"});
            box.checked = this.shown.includes(series);
            box.addEventListener("change", () => this.choose(
                this.series.filter(one => one === series ? box.checked : this.shown.includes(one))));
            return html("label", {}, box, html("span", {class: "key", ...inkOf(`c${series.colour}`)}), named(series));
        }));
    }
    // A vertical axis for each unit, with ticks as long as the curves keep half of the width.
    draw() {
        const {kind, log, zero} = this.figure.dataset, top = 28;
        const tall = Math.max(chartHeight, this.width / 5), bottom = tall - 40;
        const units = [...new Set(this.shown.map(series => series.unit))];
        const [one, two = one + 1] = this.x.values, half = kind === "bars" ? (two - one) / 2 : 0;
        const buckets = half ? this.size : Math.min(this.size, Math.ceil(this.width / 2));
        const pile = (half || kind === "stack") && piles(this.x.values, this.shown, buckets, half * 0.92);
        this.ys = new Map(units.map(unit => {
            const those = this.shown.filter(one => one.unit === unit), values = those.map(one => one.values);
            const range = roomy(pile ? pile.range : extent(values), pile || zero !== undefined);
            return [unit, axis(range, [bottom, top], {time: those[0].time})];
        }));
        const longest = ([unit, y]) => Math.max(5, unit.length, ...y.ticks.map(tick => y.text(tick).length));
        const rooms = [...this.ys].map(both => longest(both) * letter + 10);
        const past = i => rooms.slice(1, i).reduce((sum, one) => sum + one, 0);
        const axes = units.filter((_, i) => i < 2 || past(i + 1) < this.width / 2);
        const right = this.width - (past(axes.length) || 24);
        const [low, high] = extent([this.x.values]), count = Math.max(3, this.width / 70);
        const x = axis([low - half, high + half], [rooms[0] || 24, right], {log, time: this.x.time, count});
        this.pixels = this.x.values.map(x.at);
        this.heights = kind === "scatter" && this.shown[0]?.values.map(this.ys.get(units[0]).at);
        const box = {x: x.start, y: top, width: right - x.start, height: bottom - top};
        const inner = shape("svg", {...box, viewBox: Object.values(box).join(" ")}, ...this.shades(x, top, bottom),
            ...this.shown.flatMap((series, i) => this.curve(series, x, pile && pile.boxes[i])), ...this.lines(x));
        this.needle = shape("path", {d: `M0,${top}V${bottom}`, class: "needle"});
        this.dots = this.shown.map(one => shape("circle", {r: 4, class: "dot", ...inkOf(`c${one.colour}`)}));
        const sides = axes.map((unit, i) =>
            sideAxis(this.ys.get(unit), unit, i ? right + past(i) : x.start, i ? 0 : box.width, i ? "start" : "end"));
        const name = this.x.label + (this.x.unit && !this.x.time ? `, ${this.x.unit}` : "");
        return shape("svg", {viewBox: `0 0 ${this.width} ${tall}`, "aria-hidden": true},
            bottomAxis(x, name, top, bottom), ...sides, inner, this.needle, ...this.dots);
    }
    shades(x, y, bottom) {
        const pairs = (this.figure.dataset.shade || "").match(/\S+/g) || [], height = bottom - y;
        return pairs.map(pair => pair.split(":").map(end => x.at(Number(end)))).map(([from, to]) =>
            shape("rect", {class: "shade", x: from, y, width: Math.max(1, to - from), height}));
    }
    curve({unit, values, colour}, x, boxes) {
        const y = this.ys.get(unit), xs = this.x.values, ink = `c${colour}`, {kind} = this.figure.dataset;
        if (boxes)
            return [inked(boxPath(boxes, x, y), ink, "band")];
        if (kind === "scatter")
            return [inked(dots(xs, values, x, y), ink, "dots")];
        const parts = stretches(xs, values, x, y), line = inked(parts.map(pathOf).join(""), ink, "curve");
        const closed = part => `${pathOf(part)}V${y.low < 0 && y.high > 0 ? y.at(0) : y.start}H${part[0][0].toFixed(1)}Z`;
        return kind === "area" ? [inked(parts.map(closed).join(""), ink, "area"), line] : [line];
    }
    // Of a scatter: where both are equal, and the regression.
    lines(x) {
        const {fit, kind} = this.figure.dataset, [y] = this.ys.values();
        const at = (value, slope, begin) => [x.at(value), y.at(begin + slope * value)];
        const line = (name, by) => shape("path", {class: name, d: pathOf([at(x.low, ...by), at(x.high, ...by)])});
        const both = [["diagonal", [1, 0]], ...fit ? [["fit", fit.split(" ").map(Number)]] : []];
        return kind === "scatter" && y ? both.map(([name, by]) => line(name, by)) : [];
    }
    distance(i, px, py) {
        return (this.pixels[i] - px) ** 2 + (this.heights ? (this.heights[i] - py) ** 2 : 0);
    }
    mark(index) {
        const at = this.pixels[index] ?? NaN, y = ({unit, values}) => this.ys.get(unit).at(values[index]);
        place(this.needle, at, 0);
        this.dots.forEach((dot, i) => place(dot, at, this.figure.dataset.kind === "stack" ? NaN : y(this.shown[i])));
    }
}

// The track from above, coloured by one of its series.
class TrackMap extends View {
    choices() {
        this.shown = this.series.slice(0, 1);
        const select = html("select", {}, ...this.series.map(({label}, value) => html("option", {value}, label)));
        select.addEventListener("change", () => this.choose([this.series[select.value]]));
        return html("p", {class: "choice"}, html("label", {}, "Coloured by ", select));
    }
    // The same scale both ways, as high as the track asks for.
    draw() {
        const north = seriesOf(this.figure.dataset.y).values, [west, east] = extent([this.x.values]);
        const [south, far] = extent([north]), [least, most] = mapHeights, side = 24, edge = 40;
        const wide = Math.max(1, east - west), tall = Math.max(1, far - south), room = this.width - 2 * side;
        const height = Math.min(most, Math.max(least, room * tall / wide + 2 * edge));
        this.scale = Math.min(room / wide, (height - 2 * edge) / tall); // px/m
        const left = (this.width - wide * this.scale) / 2, up = (height - tall * this.scale) / 2;
        this.px = this.x.values.map(value => left + (value - west) * this.scale);
        this.py = north.map(value => up + (far - value) * this.scale);
        this.dot = shape("circle", {r: 6, class: "dot here"});
        const arrow = shape("path", {d: `M${this.width - 14},4l6,16l-6,-4l-6,4Z`, class: "north"});
        return shape("svg", {viewBox: `0 0 ${this.width} ${height}`, "aria-hidden": true}, ...this.track(),
            ...this.ends(), arrow, words("N", this.width - 14, 34, "middle"), ...this.bar(height), this.dot);
    }
    // The hundredth part at each end does not spread the colours.
    track() {
        const {values, unit} = this.shown[0], there = values.filter(value => !Number.isNaN(value)).sort();
        const [low = 0, high = 0] = [0.01, 0.99].map(part => there[Math.floor(there.length * part)]);
        const step = value => Math.floor((value - low) / (high - low || 1) * rampSteps);
        const shade = value => Number.isNaN(value) ? rampSteps : Math.max(0, Math.min(rampSteps - 1, step(value)));
        const paths = this.paths(i => shade(values[i]));
        const [from, to] = [low, high].map(value => value.toFixed(high - low < 10 ? 1 : 0));
        const after = from.length * letter + 8, sample = {y: 8, width: 12, height: 10, class: "band"};
        return [shape("path", {d: paths.join(""), class: "casing"}), words(from, 2, 17, "start"),
            ...paths.map((d, i) => inked(d, i < rampSteps ? `r${i}` : "quiet", "track")),
            ...paths.slice(1).map((_, i) => shape("rect", {x: after + i * 12, ...sample, ...inkOf(`r${i}`)})),
            words(`${to} ${unit}`, after + rampSteps * 12 + 6, 17, "start")];
    }
    // One for each colour; what moves less than a pixel in the same colour is left out.
    paths(classOf) {
        const paths = Array(rampSteps + 1).fill("");
        let kind = -1, from = [NaN, NaN];
        for (let i = 0; i < this.size; ++i) {
            const to = [this.px[i], this.py[i]], next = classOf(i), far = Math.hypot(to[0] - from[0], to[1] - from[1]);
            if (next === kind && far < 0.7)
                continue;
            if (!Number.isNaN(far))
                paths[next] += pathOf(next === kind ? [to] : [from, to]).replace("M", next === kind ? "L" : "M");
            [kind, from] = [Number.isNaN(far) ? -1 : next, to];
        }
        return paths;
    }
    ends() {
        const {px, py, width} = this, there = [...px.keys()].filter(i => !Number.isNaN(px[i] + py[i]));
        const first = there[0], last = there.at(-1), near = Math.hypot(px[first] - px[last], py[first] - py[last]) < 12;
        const sign = (i, text, kind, other) => [shape("circle", {cx: px[i], cy: py[i], r: 6, class: kind}),
            words(text, px[i] + (px[i] > width / 2 ? -10 : 10), py[i] + ((py[i] - py[other] || i - other) > 0 ? 18 : -8),
                px[i] > width / 2 ? "end" : "start", {class: "place"})];
        return [...near ? [] : sign(last, "End", "finish", first), ...sign(first, near ? "Start and end" : "Start", "begin", last)];
    }
    bar(height) {
        const half = roundStep(this.width / 6 / this.scale), long = half * this.scale, y = height - 8;
        return [shape("path", {d: `M2,${y - 5}v5h${long}v-5`, class: "bar"}),
            words(half < 1000 ? `${half} m` : `${half / 1000} km`, long + 12, y, "start")];
    }
    distance(i, px, py) {
        return (this.px[i] - px) ** 2 + (this.py[i] - py) ** 2;
    }
    mark(index) {
        place(this.dot, this.px[index] ?? NaN, this.py[index] ?? NaN);
    }
}

// A figure whose series are empty keeps the picture that it has.
const views = [...document.querySelectorAll("figure.chart, figure.map")].flatMap(figure => {
    const x = seriesOf(figure.dataset.x), series = figure.dataset.series.split(" ").map(seriesOf).filter(Boolean);
    return x?.values.length && series.length ? [new (figure.dataset.y ? TrackMap : Chart)(figure, x, series)] : [];
});
addEventListener("beforeprint", () => views.forEach(view => view.redraw(printWidth)));
addEventListener("afterprint", () => views.forEach(view => view.redraw(view.plot.clientWidth)));
