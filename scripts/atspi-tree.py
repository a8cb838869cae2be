#!/usr/bin/python3
"""Starts a program and prints its accessible tree as AT-SPI exports it: role,
name, checked state and relations, one object a line. Run it inside
scripts/atspi-session.sh; needs python3-pyatspi.

  scripts/atspi-session.sh scripts/atspi-tree.py build/apps/launcher/qforms-launcher --game 1
"""
import subprocess
import sys
import time

import pyatspi


def find_application(pid):
    for _ in range(100):
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.get_process_id() == pid and app.childCount:
                return app
        time.sleep(0.1)
    sys.exit("the program did not appear on the accessibility bus")


def line(node):
    text = f"{node.getRoleName()} {node.name!r}"
    if node.getState().contains(pyatspi.STATE_CHECKED):
        text += " checked"
    for relation in node.getRelationSet():
        kind = pyatspi.relationToString(relation.getRelationType()).lower()
        targets = ", ".join(repr(relation.getTarget(i).name)
                            for i in range(relation.getNTargets()))
        text += f" [{kind}: {targets}]"
    return text


def dump(node, depth=0):
    if not node.getState().contains(pyatspi.STATE_SHOWING) and depth > 1:
        return
    print("  " * depth + line(node))
    for child in node:
        if child is not None:
            dump(child, depth + 1)


program = subprocess.Popen(sys.argv[1:])
try:
    time.sleep(1)  # the page fills in after the window is up
    dump(find_application(program.pid))
finally:
    program.terminate()
    program.wait()
