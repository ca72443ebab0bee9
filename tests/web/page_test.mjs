// The HTML page of reports, in a browser without a screen: what a person does with it, and what it must never do.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { writeFileSync } from "node:fs";
import { pathToFileURL } from "node:url";

import { invhwctl, load, made, missing, reportOf, runAll } from "./setup.mjs";

const executablePath = ["chromium", "chromium-browser", "google-chrome"]
    .map((name) => spawnSync("sh", ["-c", `command -v ${name}`], { encoding: "utf8" }).stdout.trim())
    .find((path) => path !== "");
if (executablePath === undefined)
    missing("chromium");
const { chromium } = load("playwright-core");

function pageOf(report, name) {
    invhwctl("show", "--html", "-o", made(name), report);
    return pathToFileURL(made(name)).href;
}

// Texts that would do something if a page let them.
const hostile = [
    "</script><script>window.hacked = 1</script>",
    "<img src=x onerror=\"window.hacked = 2\">",
    "\" onmouseover=\"window.hacked = 3\" x=\"",
    "' autofocus onfocus='window.hacked = 4",
    "</style><style>* { display: none }",
    "a\u2028b\u2029c\u202edrowssap\u2066",
    "<!-- &amp; ]]> &#x3c;",
    "javascript:window.hacked = 5",
];
const sizes = ["1000", "9", "18446744073709551615", "10", "18446744073709551614", null, "99", "-1"];

function hostileReport() {
    const storage = hostile.map((text, i) => {
        const row = { Index: i + 1, Model: text, DeviceName: `/dev/sd${i * 7}` };
        if (sizes[i] !== null)
            row.SizeBytes = "SIZE" + sizes[i];
        row.Sources = { Model: `/sys/${text}` };
        return row;
    });
    const report = {
        format: "invhw-report", formatVersion: 1, program: hostile[0], date: "2026-11-21T11:35:34Z",
        versions: { OperatingSystem: 2, UNIXSystemParams: 2, Storage: 2, Gadget: 1 },
        groups: {
            OperatingSystem: [{ PrettyName: hostile[1] }],
            UNIXSystemParams: [{ Hostname: hostile[2] }],
            Storage: storage,
            Gadget: hostile.map((text) => Object.fromEntries("ABCDEFGHIJ".split("").map((name) => [name, text]))),
        },
    };
    // Numbers beyond what JavaScript counts exactly are put in as text.
    const text = JSON.stringify(report).replace(/"SIZE(\d+)"/g, "$1").replace(/"SIZE(-1)"/g, '"$1"');
    writeFileSync(made("hostile.json"), text);
    return made("hostile.json");
}

const pages = {
    laptop: pageOf(reportOf("laptop-ordinary-user"), "laptop.html"),
    server: pageOf(reportOf("server-four-nodes"), "server.html"),
    large: pageOf(reportOf("file-server"), "large.html"),
    hostile: pageOf(hostileReport(), "hostile.html"),
};

const browser = await chromium.launch({ executablePath, args: ["--no-sandbox", "--disable-gpu"] });

// Opens a page and gives it to a test; whatever it asks from elsewhere or complains of fails the test.
async function on(url, options, test) {
    const context = await browser.newContext({ viewport: { width: 1400, height: 1000 }, ...options });
    const page = await context.newPage();
    const requests = [], complaints = [];
    page.on("request", (request) => requests.push(request.url()));
    page.on("console", (message) => complaints.push(message.text()));
    page.on("pageerror", (error) => complaints.push(String(error)));
    page.on("dialog", (dialog) => complaints.push(`dialog ${dialog.message()}`));
    await page.goto(url, { waitUntil: "load" });
    for (const group of options.open ?? [])
        await page.locator(`#g-${group} summary`).click();
    await test(page);
    assert.deepEqual(complaints, []);
    assert.deepEqual(requests.filter((each) => each.split("#")[0] !== url), []);
    await context.close();
}

// Values of a column of a group's table, of the rows that are seen.
async function column(page, group, heading) {
    const table = page.locator(`#g-${group} table`);
    const headings = await table.locator("thead th").allInnerTexts();
    const place = headings.findIndex((text) => text.trim() === heading);
    assert.notEqual(place, -1, `${heading} of ${headings}`);
    return table.evaluate((element, at) => Array.from(element.tBodies[0].rows)
        .map((row) => row.cells[at].firstChild?.nodeValue ?? ""), place);
}

const headingOf = (page, group, heading) =>
    page.locator(`#g-${group} thead th`).filter({ has: page.getByRole("button", { name: heading, exact: true }) });

// Types a filter and waits until the page has looked.
async function type(page, input, text) {
    await input.fill(text);
    await page.waitForTimeout(250);
}

await runAll({
    "the page says what the machine is": () => on(pages.laptop, {}, async (page) => {
        assert.equal(await page.title(), "skerry");
        const text = await page.locator(".cards").innerText();
        for (const expected of ["FJORD 21HDCTO1WW", "13th Gen Intel(R) Core(TM) i7-1365U", "M425R2GA3BB0-CWMOL",
            "SAMSUNG MZVL21T0HDLU-00BL7", "/boot/efi", "44% of 921 GiB", "192.168.178.41/24",
            "/sys/firmware/dmi/tables/DMI: Permission denied"])
            assert.ok(text.includes(expected), expected);
        const depths = await page.locator("#disks tbody td:first-child").evaluateAll((cells) => cells.map((c) => c.className));
        assert.deepEqual(depths, ["", "d1", "d1", "d1", "d2", "d3", "d3"]);
    }),

    "links of the navigation open groups": () => on(pages.large, {}, async (page) => {
        const group = page.locator("#g-Partition");
        assert.equal(await page.locator("details[open]").count(), 0);
        assert.equal(await group.evaluate((element) => element.open), false);
        await page.getByRole("navigation").getByRole("link", { name: /^Partition/ }).click();
        await page.waitForTimeout(100);
        assert.equal(await group.evaluate((element) => element.open), true);
        await page.locator("#close").click();
        assert.equal(await page.locator("details[open]").count(), 0);
        await page.locator("#open").click();
        assert.equal(await page.locator("details:not([open])").count(), 0);
    }),

    "numbers are sorted as numbers, by keyboard too": () => on(pages.hostile, { open: ["Storage"] }, async (page) => {
        const heading = headingOf(page, "Storage", "Size Bytes");
        const button = heading.getByRole("button");
        const given = await column(page, "Storage", "Size Bytes");
        assert.deepEqual(given, sizes.map((size) => size ?? ""));
        assert.equal(await heading.getAttribute("aria-sort"), "none");
        await button.click();
        assert.equal(await heading.getAttribute("aria-sort"), "ascending");
        const up = ["-1", "9", "10", "99", "1000", "18446744073709551614", "18446744073709551615", ""];
        assert.deepEqual(await column(page, "Storage", "Size Bytes"), up);
        await button.press("Enter");
        assert.equal(await heading.getAttribute("aria-sort"), "descending");
        assert.deepEqual(await column(page, "Storage", "Size Bytes"), [...up.slice(0, -1).reverse(), ""]);
        await button.press("Space");
        assert.equal(await heading.getAttribute("aria-sort"), "none");
        assert.deepEqual(await column(page, "Storage", "Size Bytes"), given);
    }),

    "texts are sorted as people sort them": () => on(pages.hostile, { open: ["Storage"] }, async (page) => {
        await headingOf(page, "Storage", "Size Bytes").getByRole("button").click();
        const heading = headingOf(page, "Storage", "Device Name");
        await heading.getByRole("button").click();
        assert.deepEqual(await column(page, "Storage", "Device Name"), hostile.map((_, i) => `/dev/sd${i * 7}`));
        assert.equal(await headingOf(page, "Storage", "Size Bytes").getAttribute("aria-sort"), "none");
        await heading.getByRole("button").click();
        assert.equal((await column(page, "Storage", "Device Name"))[0], "/dev/sd49");
    }),

    "a table is filtered by words": () => on(pages.server, { open: ["Storage"] }, async (page) => {
        const all = await column(page, "Storage", "Device Name");
        const filter = page.getByRole("searchbox", { name: "Filter Storage" });
        await type(page, filter, "seagate SAS");
        const some = await column(page, "Storage", "Device Name");
        assert.ok(some.length > 0 && some.length < all.length, `${some.length} of ${all.length}`);
        assert.equal(await page.locator("#g-Storage output").innerText(), `${some.length} of ${all.length} rows`);
        await headingOf(page, "Storage", "Device Name").getByRole("button").click();
        assert.deepEqual(await column(page, "Storage", "Device Name"), some.toSorted?.() ?? [...some].sort());
        await type(page, filter, "no disk says this");
        assert.deepEqual(await column(page, "Storage", "Device Name"), []);
        await type(page, filter, "");
        assert.equal((await column(page, "Storage", "Device Name")).length, all.length);
    }),

    "all groups are filtered at once": () => on(pages.server, {}, async (page) => {
        const open = await page.locator("details[open]").count();
        await type(page, page.locator("#everywhere"), "mpt3sas");
        assert.ok(await page.locator("#g-Storage").isVisible());
        assert.ok(!await page.locator("#g-Memory").isVisible());
        assert.match(await page.locator("#found").innerText(), /^\d+ rows?$/);
        await type(page, page.locator("#everywhere"), "");
        assert.ok(await page.locator("#g-Memory").isVisible());
        assert.equal(await page.locator("details[open]").count(), open);
    }),

    "sources are shown when asked": () => on(pages.laptop, { open: ["Storage", "PCIDevice"] }, async (page) => {
        const sources = page.locator("#g-Storage .source");
        assert.ok(await sources.count() > 10);
        assert.ok(!await sources.first().isVisible());
        await page.getByText("Where values come from").click();
        assert.ok(await sources.first().isVisible());
        assert.match(await sources.nth(3).innerText(), /^\//);
        await page.screenshot({ path: made("sources.png"), fullPage: true });
    }),

    "no value does anything": () => on(pages.hostile, { open: ["Storage", "Gadget"] }, async (page) => {
        for (const text of hostile) {
            const shown = text.replace(/[\u2028\u2029\u202e\u2066]/g,
                (character) => `<U+${character.codePointAt(0).toString(16).toUpperCase()}>`);
            assert.equal(await page.locator("#g-Storage tbody td").filter({ hasText: shown }).count() > 0, true, shown);
        }
        for (const cell of await page.locator("tbody td").all())
            await cell.dispatchEvent("mouseover");
        assert.equal(await page.evaluate(() => window.hacked), undefined);
        assert.equal(await page.locator("img, iframe, object, embed, form, link, a:not([href^='#'])").count(), 0);
        assert.equal(await page.locator("script").count(), 1);
        assert.equal(await page.locator("style").count(), 1);
        assert.ok(!/[\u2028\u2029\u202a-\u202e\u2066-\u2069]/.test(await page.content()));
    }),

    "what slipped in would not run": async () => {
        const context = await browser.newContext();
        const page = await context.newPage();
        await page.goto(pages.hostile);
        const result = await page.evaluate(async () => {
            const script = document.createElement("script");
            script.textContent = "window.hacked = 6";
            document.body.append(script);
            const image = document.createElement("div");
            image.innerHTML = "<b onclick='window.hacked = 7'></b>";
            document.body.append(image);
            image.firstChild.click();
            const fetched = await fetch("data:,x").then(() => "fetched", () => "refused");
            return [window.hacked, fetched];
        });
        assert.deepEqual(result, [undefined, "refused"]);
        await context.close();
    },

    "the page is whole without scripts": () => on(pages.laptop, { javaScriptEnabled: false, open: ["Storage"] }, async (page) => {
        assert.ok(await page.getByRole("heading", { name: "Storage" }).isVisible());
        assert.ok(!await page.locator("#everywhere").isVisible());
        await page.getByText("Where values come from").click();
        assert.ok(await page.locator("#g-Storage .source").first().isVisible());
    }),

    "ten thousand rows are sorted and filtered": () => on(pages.large, { open: ["Partition"] }, async (page) => {
        const points = () => column(page, "Partition", "FS Mount Point");
        const count = page.locator("#g-Partition output");
        assert.equal((await points()).length, 500);
        assert.equal(await count.innerText(), "first 500 of 10006 rows");
        await headingOf(page, "Partition", "FS Mount Point").getByRole("button").click();
        assert.deepEqual((await points()).slice(0, 3), ["/", "/boot", "/export/s00000"]);
        await type(page, page.getByRole("searchbox", { name: "Filter Partition", exact: true }), "s09");
        await page.waitForFunction(() => document.querySelector("#g-Partition output").value.startsWith("first 500 of 1000 "));
        await type(page, page.getByRole("searchbox", { name: "Filter Partition", exact: true }), "s09042");
        await page.waitForFunction(() => document.querySelector("#g-Partition output").value === "1 of 10006 rows");
        assert.deepEqual(await points(), ["/export/s09042"]);
        await type(page, page.getByRole("searchbox", { name: "Filter Partition", exact: true }), "s090");
        await page.waitForFunction(() => document.querySelector("#g-Partition output").value === "100 of 10006 rows");
        assert.ok(!await page.getByRole("button", { name: "Show all" }).isVisible());
    }),

    "light, dark, narrow and on paper": async () => {
        const grounds = {};
        for (const colorScheme of ["light", "dark"])
            await on(pages.laptop, { colorScheme, open: ["Processor", "PCIDevice", "ScanStatus"] }, async (page) => {
                grounds[colorScheme] = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
                await page.screenshot({ path: made(`${colorScheme}.png`), fullPage: true });
            });
        assert.notEqual(grounds.light, grounds.dark);
        for (const name of ["laptop", "server"])
            await on(pages[name], { viewport: { width: 380, height: 800 }, open: ["Storage", "ScanStatus"] }, async (page) => {
                const [content, window] = await page.evaluate(() => [document.scrollingElement.scrollWidth, innerWidth]);
                assert.ok(content <= window, `${content} in ${window}`);
                await page.screenshot({ path: made(`narrow-${name}.png`), fullPage: true });
            });
        await on(pages.server, { open: ["Storage", "PCIDevice"] }, async (page) => {
            await page.screenshot({ path: made("server.png"), fullPage: true });
            await page.emulateMedia({ media: "print", colorScheme: "dark" });
            assert.ok(!await page.locator(".tools").isVisible());
            assert.equal(await page.evaluate(() => getComputedStyle(document.body).backgroundColor), "rgb(255, 255, 255)");
            const label = page.locator("#g-Storage tbody td").nth(3);
            assert.match(await label.evaluate((cell) => getComputedStyle(cell, "::before").content), /^"Model/);
            await page.setViewportSize({ width: 780, height: 1100 });
            const [content, window] = await page.evaluate(() => [document.scrollingElement.scrollWidth, innerWidth]);
            assert.ok(content <= window, `${content} on paper of ${window}`);
            await page.screenshot({ path: made("paper.png"), fullPage: true });
            const pdf = await page.pdf({ path: made("paper.pdf"), format: "A4", preferCSSPageSize: true });
            assert.equal(pdf.subarray(0, 5).toString(), "%PDF-");
        });
    },
});
await browser.close();
