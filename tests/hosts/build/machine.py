"""A machine as a recording has it: files, folders and links by path, answers of the kernel, errors of paths."""

import json
import os
import posixpath


class Machine:
    def __init__(self):
        self.contents = {}  # path -> bytes
        self.folders = set()
        self.links = {}  # path -> target
        self.answers = {}  # question -> argument -> answer
        self.errors = {}  # path -> name of an error

    def file(self, path, content=""):
        self.contents[path] = content.encode() if isinstance(content, str) else content

    def files(self, folder, values):
        """One attribute a file, as /sys has them: a line each; None leaves one out."""
        for name, value in values.items():
            if value is not None:
                self.file(f"{folder}/{name}", f"{value}\n")

    def folder(self, path):
        self.folders.add(path)

    def link(self, path, target):
        self.links[path] = target

    def link_to(self, path, target):
        """A link as /sys has them: the way from the link's folder to an absolute path, whose own name always stands at
        its end."""
        parent, name = posixpath.split(target)
        way = posixpath.relpath(parent, posixpath.dirname(path))
        self.link(path, name if way == "." else f"{way}/{name}")

    def answer(self, question, value, argument=""):
        self.answers.setdefault(question, {})[argument] = value

    def error(self, path, name):
        self.errors[path] = name

    def names(self, node, release, version, machine):
        self.answer("names", {"system": "Linux", "node": node, "release": release, "version": version,
                              "machine": machine})

    def size(self, mount_point, total, free, available, inodes, free_inodes):
        self.answer("fileSystemSize", {"totalBytes": total, "freeBytes": free, "availableBytes": available,
                                       "inodes": inodes, "freeInodes": free_inodes}, mount_point)

    def save(self, top):
        for path in sorted(self.folders):
            os.makedirs(top + path, exist_ok=True)
        made = set()
        for path, content in self.contents.items():
            parent = posixpath.dirname(top + path)
            if parent not in made:
                os.makedirs(parent, exist_ok=True)
                made.add(parent)
            with open(top + path, "wb") as file:
                file.write(content)
        for path, target in self.links.items():
            os.makedirs(posixpath.dirname(top + path), exist_ok=True)
            os.symlink(target, top + path)
        with open(f"{top}/invhw-kernel.json", "w", encoding="utf-8") as file:
            json.dump({"format": "invhw-kernel", "formatVersion": 1, "answers": self.answers, "errors": self.errors},
                      file, indent=1, sort_keys=True)
            file.write("\n")
