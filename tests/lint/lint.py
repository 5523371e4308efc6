"""Checks one house rule: prints what breaks it, and exits with 1 when anything does."""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from rules import RULES, Tree  # noqa: E402


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("rule", choices=sorted(RULES))
    parser.add_argument("--root", required=True, help="the folder of the sources")
    parser.add_argument("--build", required=True, help="the build folder")
    options = parser.parse_args()

    rule = RULES[options.rule]
    findings = list(rule(Tree(options.root, options.build)))
    for finding in findings:
        print(finding)
    if findings:
        print(f"\nThe rule: {rule.__doc__}")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
