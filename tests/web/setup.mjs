// What the tests here share: where things are, and how a test says that it cannot run.

import { spawnSync } from "node:child_process";
import { existsSync, mkdirSync } from "node:fs";
import { createRequire } from "node:module";
import { join, resolve } from "node:path";

// Run as: node NAME_test.mjs INVHWCTL HOSTS FOLDER, where the FOLDER has the packages of the lock file in node_modules.
const [program, hosts, folder] = process.argv.slice(2).map((path) => resolve(path));
export { hosts, program };

// Where nobody promised that all is there (INVHW_WEB=required), what is missing is a test left out, status 77 of ctest.
export function missing(what) {
    console.log(`missing: ${what}; "./dev test web" installs it`);
    process.exit(process.env.INVHW_WEB === "required" ? 1 : 77);
}

if (!existsSync(join(folder, "node_modules")))
    missing(join(folder, "node_modules"));
export const load = createRequire(join(folder, "tests.cjs"));

// A file that a test makes; folders are made as they are needed.
export function made(name) {
    mkdirSync(join(folder, "made"), { recursive: true });
    return join(folder, "made", name);
}

export function invhwctl(...words) {
    const run = spawnSync(program, words, { encoding: "utf8", maxBuffer: 1 << 28 });
    if (run.status !== 0)
        throw new Error(`invhwctl ${words.join(" ")}: ${run.status} ${run.stderr}`);
    return run.stdout;
}

// The report of a recorded host, with the sources of its values.
export function reportOf(host, name = `${host}.json`) {
    invhwctl("scan", "--root", join(hosts, host), "--sources", "-f", "json", "-o", made(name));
    return made(name);
}

// Runs tests one after another, each by its name; the first that fails ends the program.
export async function runAll(tests) {
    for (const [name, test] of Object.entries(tests)) {
        const start = Date.now();
        try {
            await test();
        } catch (error) {
            console.log(`FAILED ${name}`);
            throw error;
        }
        console.log(`ok ${name} (${Date.now() - start} ms)`);
    }
}
