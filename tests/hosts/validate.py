#!/usr/bin/env python3
"""Both forms of the reports of all recorded hosts are what the schemas say.

usage: validate.py INVHWCTL HOSTS DOCS
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys

try:
    from jsonschema import Draft202012Validator
except ImportError:
    print("python3-jsonschema is missing")
    sys.exit(77)


def report(program, host, form):
    return subprocess.run([program, "scan", "--root", host, "--format", form, "--deadline", "60"], capture_output=True,
                          check=True).stdout


def without_the_like(document):
    """At most 200 rows a group: those between are like them, and the validator takes its time."""
    for rows in document["groups"].values():
        del rows[100:-100]
    return document


def main():
    program, hosts, docs = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    if shutil.which("xmllint") is None:
        print("xmllint is missing")
        return 77
    validator = Draft202012Validator(json.loads((docs / "invhw-report.schema.json").read_text(encoding="utf-8")))
    failed = 0
    names = sorted(os.listdir(hosts))
    for name in names:
        error = next(validator.iter_errors(without_the_like(json.loads(report(program, hosts / name, "json")))), None)
        xml = subprocess.run(["xmllint", "--noout", "--schema", docs / "invhw-host.xsd", "-"],
                             input=report(program, hosts / name, "xml"), capture_output=True, check=False)
        for form, message in (("JSON", error and error.message), ("XML", xml.returncode and xml.stderr.decode())):
            if message:
                failed += 1
                print(f"{name}: {form}: {message[:2000]}")
    print(f"{len(names)} hosts, {failed} reports are not what their schema says")
    return 1 if failed or len(names) < 10 else 0


sys.exit(main())
