// Pages of --page in two browsers: quiet, without a request, read out as the rows tell, by mouse, touch and keys, without
// scripts and on paper; the pictures and the paper stay in build/pages to be looked at.

import assert from "node:assert/strict";
import {execFileSync} from "node:child_process";
import {copyFileSync, existsSync, mkdirSync, readFileSync, statSync, writeFileSync} from "node:fs";
import {createRequire} from "node:module";
import path from "node:path";
import {after, before, test} from "node:test";
import {fileURLToPath, pathToFileURL} from "node:url";

const root = path.resolve(path.dirname(fileURLToPath(import.meta.url)), "../..");
const cli = process.env.TORVANE_CLI || path.join(root, "build/native/torvane-cli");
const folder = path.join(root, "build/pages");
const packages = {"puppeteer-core": "24.43.1", "axe-core": "4.14.1"};
const hostile = "<img src=x onerror=alert(1)>&\"'";
const escaped = hostile.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/"/g, "&quot;");
const browsers = {
    chromium: {executablePath: "/usr/bin/chromium", args: ["--no-sandbox"]},
    firefox: {browser: "firefox", executablePath: "/usr/bin/firefox-esr"},
};
const widths = [360, 1024, 1920], records = [3000, 20000, 100000];
const columns = {Altitude: "altitude_m", Speed: "speed_kph", "Predicted cadence": "cadence_rpm",
    "Heart rate": "heartRate_bpm", "Predicted power": "power_W"};
let opened = {}, axe;

const file = name => path.join(folder, name);
const road = path.join(root, "samples/profiles/road.pro");
const runWith = (profile, ...args) =>
    execFileSync(cli, ["--force", "--profile", profile, ...args], {encoding: "utf8", maxBuffer: 1 << 28});
const run = (...args) => runWith(road, ...args);
const sample = name => path.join(root, "samples/rides", name);

function install() {
    mkdirSync(folder, {recursive: true});
    const wanted = Object.entries(packages).map(([name, version]) => `${name}@${version}`);
    execFileSync("npm", ["install", "--silent", "--no-save", "--no-package-lock", "--prefix", folder, ...wanted]);
    return createRequire(path.join(folder, "package.json"));
}

// A wavy road with a meter, a record a second.
function writeRide(name, count) {
    const points = Array.from({length: count}, (_, i) => {
        const wave = Math.sin(i / 40), lat = 46 + i * 5e-5 + wave * 1e-4, lon = 8 + 0.02 * Math.sin(i / 900);
        const time = new Date(Date.UTC(2024, 5, 15, 6) + i * 1000).toISOString();
        return `<trkpt lat="${lat.toFixed(7)}" lon="${lon.toFixed(7)}"><ele>${(500 + 80 * Math.sin(i / 700)).toFixed(1)}</ele>` +
            `<time>${time}</time><extensions><power>${Math.round(180 + 90 * wave + i % 13)}</power><hr>${130 + i % 30}</hr>` +
            `<cad>${80 + i % 11}</cad></extensions></trkpt>`;
    });
    writeFileSync(file(name), `<gpx version="1.1" xmlns="http://www.topografix.com/GPX/1/1"><trk><name>${escaped}</name>` +
        `<type>cycling</type><trkseg>${points.join("\n")}</trkseg></trk></gpx>`);
    return file(name);
}

// The same names where a TCX file has one: of its laps, its notes and what made it.
function writeLaps(name) {
    const named = ["Name", "Notes"].map(tag => `<${tag}>${escaped}</${tag}>`).join("");
    const point = i => `<Trackpoint><Time>${new Date(Date.UTC(2024, 5, 15, 6) + i * 1000).toISOString()}</Time><Position>` +
        `<LatitudeDegrees>${46 + i * 5e-5}</LatitudeDegrees><LongitudeDegrees>8</LongitudeDegrees></Position>` +
        `<AltitudeMeters>${500 + i / 10}</AltitudeMeters></Trackpoint>`;
    const laps = [0, 300].map(from => `<Lap StartTime="${escaped}">${named}<Track>` +
        `${Array.from({length: 300}, (_, i) => point(from + i)).join("")}</Track></Lap>`);
    writeFileSync(file(name), `<TrainingCenterDatabase><Activities><Activity Sport="Biking"><Id>${escaped}</Id>` +
        `${laps.join("")}${named}<Creator>${named}</Creator></Activity></Activities></TrainingCenterDatabase>`);
    return file(name);
}

// Each page, and what makes it.
const pages = {
    ride: ["ride", sample("meter.fit")],
    analyse: ["analyse", "--set", "detectBraking=on", sample("valley.fit")],
    plan: ["plan", sample("pass.gpx")],
    plans: ["plan", sample("pass.gpx"), "--against", "power=250", "--against", "pacing=three"],
    compare: ["compare-rides", sample("meter.fit"), sample("meter.fit")],
    run: ["acceleration"],
};

before(async () => {
    const require = install();
    const {default: puppeteer} = await import(pathToFileURL(require.resolve("puppeteer-core")));
    axe = readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
    for (const [name, call] of Object.entries(pages))
        run("--page", file(`${name}.html`), ...call);
    run("--rows", file("ride.csv"), ...pages.ride);
    for (const [name, options] of Object.entries(browsers)) {
        assert.ok(existsSync(options.executablePath), `${options.executablePath} is missing: tools/need extra`);
        opened[name] = await puppeteer.launch(options);
    }
});

after(() => Promise.all(Object.values(opened).map(browser => browser.close())));

// Opens a page, calls `look` with it, and holds that it said nothing and asked for nothing.
async function visit(browser, name, {width = 1024, mode = "light", scripts = true} = {}, look) {
    const page = await opened[browser].newPage(), said = [], asked = [];
    if (browser === "chromium")
        await countProcessorTime(page);
    page.on("console", message => said.push(message.text()));
    page.on("pageerror", error => said.push(String(error)));
    page.on("request", request => asked.push(request.url()));
    if (!scripts)
        await page.setJavaScriptEnabled(false);
    await page.setViewport({width, height: 800, hasTouch: browser === "chromium"});
    if (browser === "chromium")
        await page.emulateMediaFeatures([{name: "prefers-color-scheme", value: mode}]);
    page.setDefaultNavigationTimeout(180000); // ms: on a machine that has other work as well
    const url = pathToFileURL(name).href;
    await page.goto(url);
    try {
        if (scripts)
            await frames(page);
        return await look(page);
    } finally {
        assert.deepEqual(said, [], `${name} in ${browser}`);
        assert.deepEqual(asked.filter(one => one !== url && !one.startsWith("data:")), [], `${name} in ${browser}`);
        await page.close();
    }
}

async function countProcessorTime(page) {
    const client = await page.createCDPSession();
    await client.send("Performance.disable");
    await client.send("Performance.enable", {timeDomain: "threadTicks"});
    page.spent = async () => (await client.send("Performance.getMetrics")).metrics.find(one => one.name === "TaskDuration").value;
}

const frames = page => page.evaluate(() =>
    new Promise(done => requestAnimationFrame(() => requestAnimationFrame(() => requestAnimationFrame(done)))));
const readouts = page => page.$$eval(".readout", all => all.map(one => one.textContent).filter(Boolean));

function rowsOf(name) {
    const [head, ...lines] = readFileSync(name, "utf8").trim().split("\n").map(line => line.split(","));
    return lines.map(line => Object.fromEntries(head.map((column, i) => [column, line[i]])));
}

// "Distance 5.369 km · Power 234 W" as numbers with the digits that are shown.
const parsed = text => Object.fromEntries(text.split(" · ").map(part => /^(.*?) (-?[\d.]+|none)/.exec(part).slice(1)));
const close = (shown, value) => Math.abs(shown - value) <= 0.5000001 * 10 ** -(shown.split(".")[1] || "").length;
const equals = (shown, value) => shown === "none" ? value === "" : value !== "" && close(shown, value);

function assertRow(text, rows) {
    const values = parsed(text), known = Object.keys(columns).filter(name => name in values);
    const near = rows.filter(row => close(values.Distance, row.distance_m / 1000));
    assert.ok(near.some(row => known.every(name => equals(values[name], row[columns[name]]))), `${text}: ${JSON.stringify(near)}`);
    return known.length;
}

for (const browser of Object.keys(browsers)) {
    test(`${browser}: the cursor reads out what the rows tell, by mouse, touch and keys`, () =>
        visit(browser, file("ride.html"), {}, async page => {
            const rows = rowsOf(file("ride.csv")), plot = await page.$("figure.chart .plot");
            for (const choice of await page.$$("fieldset input:not(:checked)"))
                await choice.click();
            await plot.scrollIntoView();
            const box = await plot.boundingBox();
            for (let i = 0; i < 10; ++i) {
                const x = box.x + 60 + (box.width - 100) * i / 9, y = box.y + 60;
                await (browser === "chromium" && i % 2 ? page.touchscreen.tap(x, y) : page.mouse.move(x, y));
                await frames(page);
                const checked = (await readouts(page)).filter(text => text.startsWith("Distance")).map(text => assertRow(text, rows));
                const needle = await page.$eval(".needle", line => line.getBoundingClientRect().x);
                assert.ok(Math.abs(needle - x) < 10, `${needle} ${x}`);
                assert.ok(checked.reduce((sum, one) => sum + one, 0) >= 4, `${checked}`);
            }
        }));

    test(`${browser}: keys alone reach every point and every choice`, () =>
        visit(browser, file("ride.html"), {}, async page => {
            const focused = () => page.evaluate(() => document.activeElement.matches("figure.chart .plot"));
            for (let i = 0; i < 30 && !await focused(); ++i)
                await page.keyboard.press("Tab");
            assert.ok(await focused());
            const said = async key => {
                await page.keyboard.press(key);
                await frames(page);
                return page.evaluate(() => document.activeElement.getAttribute("aria-valuetext"));
            };
            const far = async key => Number(parsed(await said(key)).Distance);
            const [first, second, end, page1] = [await far("Home"), await far("ArrowRight"), await far("End"), await far("PageDown")];
            assert.ok(first <= second && second < page1 && page1 < end, `${[first, second, page1, end]}`);
            assert.equal(await said("Escape"), "no point chosen");
            assert.deepEqual(await readouts(page), []);
            const boxes = await page.$("fieldset.choice input"), curves = () => page.$eval("figure:has(fieldset) .plot svg",
                svg => svg.querySelectorAll(".curve, .band, .dots").length);
            await boxes.focus();
            const shown = await curves();
            await page.keyboard.press(" ");
            assert.equal(await curves(), shown - 1);
        }));

    for (const name of Object.keys(pages))
        test(`${browser}: ${name} at every width, in both modes, to everyone`, async () => {
            for (const width of widths)
                for (const mode of browser === "chromium" ? ["light", "dark"] : ["light"])
                    await visit(browser, file(`${name}.html`), {width, mode}, page => inspect(page, `${name}-${browser}-${width}-${mode}`));
        });
}

async function inspect(page, name) {
    await page.screenshot({path: file(`${name}.png`), fullPage: true});
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${name} is wider than the window`);
    assert.deepEqual(await page.evaluate(overlaps), [], name);
    const ids = await page.$$eval("[id]", all => all.map(one => one.id));
    assert.deepEqual(ids.filter((id, i) => ids.indexOf(id) !== i), [], name);
    await page.evaluate(axe);
    const found = await page.evaluate(() => axe.run({resultTypes: ["violations"]}));
    const serious = found.violations.filter(one => ["serious", "critical"].includes(one.impact));
    assert.deepEqual(serious.map(one => `${one.id}: ${one.nodes[0].html.slice(0, 200)}`), [], name);
    assert.ok(found.passes.length > 10, name);
}

// Texts of a chart that touch one another or leave it; runs in the page.
function overlaps() {
    const touch = (a, b) => a.left < b.right - 1 && b.left < a.right - 1 && a.top < b.bottom - 2 && b.top < a.bottom - 2;
    return [...document.querySelectorAll("figure svg")].flatMap(svg => {
        const edge = svg.getBoundingClientRect();
        const texts = [...svg.querySelectorAll("text")].map(text => ({text: text.textContent, box: text.getBoundingClientRect()}));
        const out = texts.filter(({box}) => box.left < edge.left - 1 || box.right > edge.right + 1);
        const on = texts.flatMap((a, i) => texts.slice(0, i).filter(b => touch(a.box, b.box)).map(b => ({text: `${b.text} on ${a.text}`})));
        return [...out.map(({text, box}) => `${text} at ${box.left - edge.left} of ${edge.width}`), ...on.map(({text}) => text)];
    });
}

test("without scripts the pictures and the tables are there", async () => {
    for (const name of Object.keys(pages))
        await visit("chromium", file(`${name}.html`), {scripts: false}, async page => {
            const shown = await page.$$eval(".chart svg, .map svg", all => all.filter(svg => svg.querySelector("polyline, path, rect") &&
                svg.getBoundingClientRect().height > 50).length);
            assert.equal(shown, (await page.$$("figure.chart, figure.map")).length, name);
            assert.ok(shown && (await page.$$("table tbody tr")).length, name);
        });
});

test("names from outside stay text", async () => {
    const ride = writeRide(`${hostile}.gpx`, 600), laps = writeLaps(`${hostile}.tcx`), profile = file(`${hostile}.pro`);
    const fit = file(`${hostile}.fit`);
    copyFileSync(road, profile);
    copyFileSync(sample("valley.fit"), fit);
    for (const call of [["ride", ride], ["ride", laps], ["analyse", fit], ["plan", ride], ["compare-rides", ride, ride]]) {
        runWith(profile, "--page", file("hostile.html"), ...call);
        await visit("chromium", file("hostile.html"), {}, async page => {
            assert.equal((await page.$$("img, [onerror]")).length, 0);
            assert.equal((await page.$$("script")).length, 1);
            assert.ok((await page.$eval("h1", head => head.textContent)).includes(hostile), call[0]);
        });
    }
});

test("on paper nothing is cut", async () => {
    for (const name of Object.keys(pages))
        await visit("chromium", file(`${name}.html`), {}, async page => {
            const titles = await page.$$eval("figcaption, caption", all => all.map(one => one.textContent));
            await page.pdf({path: file(`${name}.pdf`), preferCSSPageSize: true});
            const text = execFileSync("pdftotext", [file(`${name}.pdf`), "-"], {encoding: "utf8"}).replace(/\s+/g, " ");
            assert.deepEqual(titles.filter(title => !text.includes(title.replace(/\s+/g, " ").trim())), [], name);
        });
});

// Times are of the processor, of the page's thread: what others do on the machine at the same time does not count.
test("a long ride opens within a second and follows at 30 frames a second", async t => {
    for (const count of records) {
        const ride = writeRide(`long-${count}.gpx`, count), page = file(`long-${count}.html`);
        run("--page", page, "ride", ride);
        await visit("chromium", page, {}, async page => {
            const open = await page.spent(), moves = 60, plot = await page.$("figure.chart .plot");
            await plot.scrollIntoView();
            const box = await plot.boundingBox();
            for (let i = 0; i < moves; ++i) {
                await page.mouse.move(box.x + 60 + i * 10, box.y + 60);
                await frames(page);
            }
            const move = (await page.spent() - open) / moves, size = statSync(file(`long-${count}.html`)).size / 1e6;
            t.diagnostic(`${count} records: ${size.toFixed(2)} MB, opens in ${open.toFixed(2)} s, ${(move * 1000).toFixed(1)} ms a move`);
            assert.ok(size < 3 && open < 1 && move < 1 / 30, `${size} ${open} ${move}`);
        });
    }
});
