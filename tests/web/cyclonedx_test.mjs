// Bills of materials, by the ecosystem's own validator and reader of package URLs.

import assert from "node:assert/strict";
import { readFileSync, readdirSync } from "node:fs";

import { hosts, invhwctl, load, made, reportOf, runAll } from "./setup.mjs";

const { Spec, Validation } = load("@cyclonedx/cyclonedx-library");
const { PackageURL } = load("packageurl-js");
const validator = new Validation.JsonStrictValidator(Spec.Version.v1dot6);

function bomOf(report) {
    return invhwctl("convert", "--to", "cyclonedx", report);
}

// Every component, those inside of others too.
function componentsOf(bom) {
    const all = [];
    const add = (component) => {
        all.push(component);
        (component.components ?? []).forEach(add);
    };
    add(bom.metadata.component);
    bom.components.forEach(add);
    return all;
}

async function checked(text) {
    assert.equal(await validator.validate(text), null);
    const bom = JSON.parse(text);
    const all = componentsOf(bom);
    const references = new Set(all.map((component) => component["bom-ref"]));
    assert.equal(references.size, all.length, "references are unique");
    for (const { ref, dependsOn } of bom.dependencies)
        assert.ok(references.has(ref) && dependsOn.every((on) => references.has(on)), ref);
    for (const { name, purl, version } of all.filter((component) => component.purl !== undefined)) {
        const read = PackageURL.fromString(purl);
        const epoch = read.qualifiers?.epoch; // of rpm, which has it in front of the version
        assert.deepEqual([read.name, epoch === undefined ? read.version : `${epoch}:${read.version}`], [name, version], purl);
        assert.match(purl, /^[A-Za-z0-9%.\-_~:/@?&=]+$/);
    }
    return bom;
}

await runAll({
    "the validator finds what is wrong": async () => {
        const bom = JSON.parse(bomOf(reportOf("laptop")));
        assert.equal(await validator.validate(JSON.stringify(bom)), null);
        bom.components[0].type = "gadget";
        assert.notEqual(await validator.validate(JSON.stringify(bom)), null);
    },

    "every recorded host's is valid": async () => {
        for (const host of readdirSync(hosts))
            await checked(bomOf(reportOf(host)));
    },

    "a report in either form has the same parts and number": async () => {
        const json = reportOf("laptop"), xml = made("laptop.xml");
        invhwctl("convert", "--to", "xml", "-o", xml, json);
        const [a, b] = [await checked(bomOf(json)), await checked(bomOf(xml))];
        assert.deepEqual(a.components, b.components);
        assert.equal(a.serialNumber, b.serialNumber);
        assert.equal(bomOf(json), bomOf(json));
        const others = ["server-four-nodes", "virtual-machine"].map((host) => JSON.parse(bomOf(reportOf(host))).serialNumber);
        assert.equal(new Set([a.serialNumber, ...others]).size, 3);
    },

    "parts have names, makers, firmware, drivers and identifying values": async () => {
        const bom = await checked(bomOf(reportOf("laptop")));
        const disk = bom.components.find((component) => component["bom-ref"] === "Storage/eui.0025384531b0a1c2");
        assert.equal(disk.type, "device");
        assert.equal(disk.name, "SAMSUNG MZVL21T0HDLU-00BL7");
        assert.deepEqual(disk.components.map(({ type, version }) => [type, version]), [["firmware", "3L2QGXA7"]]);
        const value = (name) => disk.properties.find((property) => property.name === name)?.value;
        assert.equal(value("invhw:Storage:SerialNumber"), "S7E0NX0W612345");
        assert.equal(value("invhw:Storage:Index"), undefined);
        assert.ok(bom.dependencies.some(({ ref, dependsOn }) => ref === disk["bom-ref"] && dependsOn[0] === "Driver/nvme"));
        assert.equal(bom.metadata.component.properties.find(({ name }) => name.endsWith(":SystemUUID")).value,
            "4c4c4544-0051-3510-8052-b6c04f4d3732");
        const types = new Set(componentsOf(bom).map(({ type }) => type));
        for (const type of ["device", "firmware", "device-driver", "operating-system", "library", "application"])
            assert.ok(types.has(type), type);
    },

    "reports of invhw have one too": async () => {
        const machine = new URL("../machines/modern-server/expected.xml", import.meta.url).pathname;
        assert.ok(readFileSync(machine).length > 0);
        const bom = await checked(bomOf(machine));
        assert.equal(bom.metadata.timestamp, undefined); // its zone is nowhere told
        assert.equal(bom.components.filter(({ name }) => name === "Synchronous").length, 24);
    },
});
