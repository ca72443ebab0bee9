#!/usr/bin/env python3
"""The schema of the JSON form accepts what the form allows and rejects what it does not.

usage: json_schema_test.py SCHEMA HOST_DOCS FOLDER

HOST_DOCS is the program that writes the sample with every group and attribute; FOLDER holds accepted/ and
rejected-host/. A rejected report differs from an accepted one in the one thing that its name tells.
"""

import json
import pathlib
import subprocess
import sys

try:
    from jsonschema import Draft202012Validator
except ImportError:
    print("python3-jsonschema is missing")
    sys.exit(77)


def main():
    schema, host_docs, folder = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    validator = Draft202012Validator(json.loads(schema.read_text(encoding="utf-8")))
    validator.check_schema(validator.schema)
    sample = subprocess.run([host_docs, "--sample", "json"], capture_output=True, check=True).stdout
    reports = {"sample": json.loads(sample)}
    for path in sorted((folder / "accepted").glob("*.json")) + sorted((folder / "rejected-host").glob("*.json")):
        reports[f"{path.parent.name}/{path.name}"] = json.loads(path.read_text(encoding="utf-8"))
    failed = 0
    for name, report in reports.items():
        error = next(validator.iter_errors(report), None)
        if (error is not None) != name.startswith("rejected-host/"):
            failed += 1
            print(f"{name}: {error.message if error is not None else 'is accepted'}")
    print(f"{len(reports)} reports, {failed} judged wrongly")
    return 1 if failed or len(reports) < 10 else 0


sys.exit(main())
