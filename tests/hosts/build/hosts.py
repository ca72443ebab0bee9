#!/usr/bin/env python3
"""Makes the recorded hosts.

usage: hosts.py FOLDER
       hosts.py --pack RECORDING FILE

FOLDER gets a folder a host: those that this program builds, and those that invhwctl record made, which stand packed in
tests/hosts/<name>/recording.json. --pack makes such a file of a recording.
"""

import base64
import importlib
import json
import os
import shutil
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
BUILT = {
    "laptop": "laptop",
    "laptop-ordinary-user": "laptop_user",
    "server-four-nodes": "server",
    "file-server": "file_server",
    "arm-board": "arm_board",
    "network": "network",
    "old-kernel": "old_kernel",
    "processors-288": "processors_288",
    "container": "container",
    "rolling": "rolling",
    "enterprise": "enterprise",
}


def entry_of(path):
    if os.path.islink(path):
        return {"link": os.readlink(path)}
    if os.path.isdir(path):
        return {"folder": {name: entry_of(os.path.join(path, name)) for name in sorted(os.listdir(path))}}
    with open(path, "rb") as file:
        content = file.read()
    try:
        text = content.decode()
        return {"lines": text.split("\n")} if "\n" in text[:-1] else text
    except UnicodeDecodeError:
        return {"base64": base64.b64encode(content).decode()}


def bytes_of(entry):
    if isinstance(entry, str):
        return entry.encode()
    return "\n".join(entry["lines"]).encode() if "lines" in entry else base64.b64decode(entry["base64"])


def make(path, entry):
    if isinstance(entry, dict) and "link" in entry:
        os.symlink(entry["link"], path)
    elif isinstance(entry, dict) and "folder" in entry:
        os.makedirs(path)
        for name, child in entry["folder"].items():
            make(os.path.join(path, name), child)
    else:
        with open(path, "wb") as file:
            file.write(bytes_of(entry))


def pack(recording, file):
    with open(file, "w", encoding="utf-8") as out:
        json.dump(entry_of(recording), out, indent=1, ensure_ascii=False)
        out.write("\n")


def build(folder):
    shutil.rmtree(folder, ignore_errors=True)
    for name, module in BUILT.items():
        importlib.import_module(module).build().save(f"{folder}/{name}")
    for name in sorted(os.listdir(f"{HERE}/..")):
        recording = f"{HERE}/../{name}/recording.json"
        if os.path.exists(recording):
            with open(recording, encoding="utf-8") as file:
                make(f"{folder}/{name}", json.load(file))


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    if len(sys.argv) == 4 and sys.argv[1] == "--pack":
        pack(sys.argv[2], sys.argv[3])
    elif len(sys.argv) == 2:
        build(sys.argv[1])
    else:
        sys.exit(__doc__)
