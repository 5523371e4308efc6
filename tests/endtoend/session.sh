#!/usr/bin/env bash
# Runs a command in a session of its own: with its own message bus, and its own folder for sockets,
# so that the accessibility buses of tests that run side by side do not meet in one.
set -euo pipefail

XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
dbus-run-session -- "$@"
