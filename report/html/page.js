"use strict";
// Sorts and filters the tables of the page. The page is whole without it.
(() => {
    const collator = new Intl.Collator("en", { numeric: true, sensitivity: "base" });
    const atOnce = 500; // rows of a table that are shown until somebody wants them all: browsers lay out no more with ease
    const tables = Array.from(document.querySelectorAll(".group table"), (table) => new Table(table));
    const everywhere = document.getElementById("everywhere");
    const found = document.getElementById("found");

    // A cell's value is its first text; where it came from stands in an element behind it.
    function textOf(cell) {
        const first = cell === undefined ? null : cell.firstChild;
        return first !== null && first.nodeType === Node.TEXT_NODE ? first.data : "";
    }

    // What a cell is sorted by: null where it is empty, numbers of any size as such, texts as they are.
    function keyOf(cell, kind) {
        const text = textOf(cell);
        if (text === "")
            return null;
        if (kind === "number" && /^-?\d+$/.test(text))
            return text.length < 16 ? Number(text) : BigInt(text);
        if (kind === "number" && Number.isFinite(Number(text)))
            return Number(text);
        const time = kind === "date" ? Date.parse(text.replace(" ", "T")) : NaN;
        return Number.isNaN(time) ? text : time;
    }

    // Numbers before texts.
    function compare(a, b) {
        const isTextA = typeof a === "string", isTextB = typeof b === "string";
        if (isTextA !== isTextB)
            return isTextA ? 1 : -1;
        if (isTextA)
            return collator.compare(a, b);
        return a < b ? -1 : a > b ? 1 : 0;
    }

    function Table(table) {
        const body = table.tBodies[0];
        const group = table.closest("details");
        const rows = Array.from(body.rows); // as the report has them
        const headings = Array.from(table.tHead.rows[0].cells);
        const words = new Map(); // a row's values in lower case, made when they are looked at
        const count = document.createElement("output");
        const filter = document.createElement("input");
        const more = document.createElement("button");
        let ordered = rows, own = [], all = [], limit = atOnce;

        // Empty cells stay at the end, whichever way.
        function sorted(column, direction) {
            const kind = headings[column].dataset.kind;
            const keyed = rows.map((row, place) => ({ row, place, key: keyOf(row.cells[column], kind) }));
            keyed.sort((a, b) => {
                if (a.key === null || b.key === null)
                    return (a.key === null) - (b.key === null) || a.place - b.place;
                return direction * compare(a.key, b.key) || a.place - b.place;
            });
            return keyed.map((each) => each.row);
        }

        // Upwards, downwards, as the report has it.
        function sort(column) {
            const heading = headings[column];
            const before = heading.getAttribute("aria-sort");
            const after = before === "ascending" ? "descending" : before === "descending" ? "none" : "ascending";
            for (const other of headings)
                other.setAttribute("aria-sort", "none");
            heading.setAttribute("aria-sort", after);
            ordered = after === "none" ? rows : sorted(column, after === "ascending" ? 1 : -1);
            show();
        }

        function textOfRow(row) {
            let text = words.get(row);
            if (text === undefined) {
                text = Array.from(row.cells, textOf).join("\n").toLowerCase();
                words.set(row, text);
            }
            return text;
        }

        function show() {
            const wanted = own.concat(all);
            const rowsFound = ordered.filter((row) => wanted.every((word) => textOfRow(row).includes(word)));
            const matching = rowsFound.length;
            const fragment = document.createDocumentFragment();
            for (const row of rowsFound.slice(0, limit))
                fragment.append(row);
            body.replaceChildren(fragment); // rows that are not shown are not part of the page, which stays quick
            more.hidden = matching <= limit;
            more.textContent = `Show all ${matching}`;
            const first = matching > limit ? `first ${limit} of ` : "";
            if (wanted.length !== 0)
                count.value = `${first}${matching} of ${rows.length} rows`;
            else
                count.value = first === "" ? "" : `${first}${matching} rows`;
            return matching;
        }

        // The words that are looked for in all tables; how many rows have them.
        this.filterAll = (wanted) => {
            if (all.length === 0 && wanted.length !== 0)
                this.wasOpen = group.open;
            const wasFiltered = all.length !== 0;
            all = wanted;
            const shown = show();
            group.parentElement.hidden = wanted.length !== 0 && shown === 0;
            if (wanted.length !== 0)
                group.open = shown !== 0;
            else if (wasFiltered)
                group.open = this.wasOpen;
            return shown;
        };

        headings.forEach((heading, column) => {
            const button = document.createElement("button");
            button.type = "button";
            button.append(...heading.childNodes);
            button.addEventListener("click", () => sort(column));
            heading.setAttribute("aria-sort", "none");
            heading.append(button);
        });
        filter.type = "search";
        filter.placeholder = "Filter rows";
        filter.setAttribute("aria-label", `Filter ${group.dataset.name}`);
        filter.addEventListener("input", later(() => {
            own = wordsOf(filter.value);
            show();
        }));
        const bar = document.createElement("div");
        bar.className = "bar";
        more.type = "button";
        more.addEventListener("click", () => {
            limit = Infinity;
            show();
        });
        bar.append(filter, count, more);
        table.parentElement.before(bar);
        show();
    }

    function wordsOf(text) {
        return text.toLowerCase().split(/\s+/).filter((word) => word !== "");
    }

    // Waits until nothing was typed for a moment.
    function later(action) {
        let timer = 0;
        return () => {
            clearTimeout(timer);
            timer = setTimeout(action, 120);
        };
    }

    function openAll(isOpen) {
        for (const group of document.querySelectorAll(".group details"))
            group.open = isOpen;
    }

    // A link to a group opens it.
    function openTarget() {
        const target = document.getElementById(decodeURIComponent(location.hash.slice(1)));
        if (target instanceof HTMLDetailsElement)
            target.open = true;
    }

    everywhere.addEventListener("input", later(() => {
        const wanted = wordsOf(everywhere.value);
        const shown = tables.reduce((sum, table) => sum + table.filterAll(wanted), 0);
        found.value = wanted.length === 0 ? "" : shown === 1 ? "1 row" : `${shown} rows`;
    }));
    document.getElementById("open").addEventListener("click", () => openAll(true));
    document.getElementById("close").addEventListener("click", () => openAll(false));
    window.addEventListener("hashchange", openTarget);
    document.addEventListener("click", (event) => {
        if (event.target.closest("nav a") !== null)
            setTimeout(openTarget);
    });
    openTarget();
    for (const element of document.querySelectorAll("[data-script]"))
        element.hidden = false;
})();
