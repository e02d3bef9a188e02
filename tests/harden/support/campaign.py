"""The frame of a campaign: parts of so many rounds, each round with random numbers of its own, and what broke in them.

A campaign is an executable file beside this folder: classes derived from Part, and at its end `campaign.main(Part, ...)`.
"""

import argparse
import contextlib
import json
import os
import random
import signal
import sys
import time
import traceback

ENOUGH = 20  # broken rounds, after which a part ends early


class Broken(Exception):
    """A promise that was not kept."""


class Part:
    """One kind of strain. What it needs is made in set_up(), also anew after a round in which something broke."""

    name = ""
    count = 100  # rounds on demand
    short = 2    # rounds in the test run
    seed = 1
    unit = "rounds"
    batch = 1    # rounds that one call of round() plays

    def __init__(self, count, seed, is_short):
        self.count, self.seed, self.is_short = count, seed, is_short
        self.first = 1  # the number of the first round
        self.figures = {}  # what was measured, in words
        self.broken = []
        self.cleanups = contextlib.ExitStack()

    def set_up(self):
        """Before the first round."""

    def round(self, number, numbers):
        """One round; `numbers` is its random.Random. What breaks is raised: Broken, or anything else."""
        raise NotImplementedError

    def finish(self):
        """After the last round: what can be said of all of them only."""

    @staticmethod
    def check(condition, what):
        if not condition:
            raise Broken(what)

    def log(self, *words):
        print(f"{time.strftime('%H:%M:%S')} {self.name}:", *words, flush=True)

    def run(self, first=1):
        begun = time.monotonic()
        played = 0
        ready = False
        self.first = first
        for number in range(first, first + self.count, self.batch):
            ready = ready or self._attempt("set-up", self.set_up)
            if not ready:
                break
            numbers = random.Random(f"{self.seed} {self.name} {number}")
            played += min(self.batch, first + self.count - number)
            if not self._attempt(f"round {number}", lambda: self.round(number, numbers)):
                self.cleanups.close()
                ready = False
            if len(self.broken) >= ENOUGH:
                break
        if ready:
            self._attempt("the end", self.finish)
        self.cleanups.close()
        return {"part": self.name, "count": played, "unit": self.unit, "seed": self.seed,
                "seconds": round(time.monotonic() - begun), "broken": self.broken, "figures": self.figures}

    def _attempt(self, where, action):
        try:
            action()
            return True
        except Exception as error:  # whatever it is, it belongs into the report
            self.broken.append(f"{where}: {error or type(error).__name__}")
            self.log("BROKEN in", self.broken[-1])
            if not isinstance(error, Broken):
                traceback.print_exc()
            return False


def main(*parts):
    name = os.path.basename(sys.argv[0])
    parser = argparse.ArgumentParser(prog=f"harden {name}", description=sys.modules["__main__"].__doc__)
    parser.add_argument("part", nargs="*", help=f"which parts: {', '.join(part.name for part in parts)}; else all")
    parser.add_argument("-n", "--count", type=int, help="how many rounds")
    parser.add_argument("-s", "--seed", type=int, help="what the random numbers come from")
    parser.add_argument("--from", type=int, default=1, dest="first", metavar="ROUND",
                        help="the round to begin with: with `-n 1` that one alone")
    parser.add_argument("--short", action="store_true", help="few rounds, as in the test run")
    options = parser.parse_args()
    unknown = set(options.part) - {part.name for part in parts}
    if unknown:
        parser.error(f"there is no part {', '.join(sorted(unknown))}")

    # In the background a shell has it ignored, and then the program would leave it ignored, too.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    broken = False
    for part in parts:
        if options.part and part.name not in options.part:
            continue
        count = options.count or (part.short if options.short else part.count)
        result = part(count, part.seed if options.seed is None else options.seed, options.short).run(options.first)
        broken = broken or bool(result["broken"])
        print(f"== {name} {result['part']}: {result['count']} {result['unit']}, seed {result['seed']}, {result['seconds']} s, "
              f"{len(result['broken'])} broken" + "".join(f"; {key} {value}" for key, value in result["figures"].items()),
              flush=True)
        if "HARDEN_RESULTS" in os.environ:
            with open(os.environ["HARDEN_RESULTS"], "a", encoding="utf-8") as file:
                file.write(json.dumps({"campaign": name, **result}) + "\n")
    sys.exit(1 if broken else 0)
