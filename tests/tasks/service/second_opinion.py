#!/usr/bin/env python3
"""Compares the starts of random triggers with those that dateutil finds: second_opinion.py PROGRAM [SEED]."""

import datetime
import itertools
import random
import subprocess
import sys

from dateutil import rrule

TRIGGERS = 600
STARTS = 25
EPOCH = datetime.datetime(1970, 1, 1)
WEEKDAYS = [rrule.SU, rrule.MO, rrule.TU, rrule.WE, rrule.TH, rrule.FR, rrule.SA]
ONCE, DAILY, WEEKLY, BY_DATE, BY_WEEKDAY = range(5)


def bits(mask):
    return [i for i in range(32) if mask >> i & 1]


def random_trigger():
    begin = datetime.datetime(1990, 1, 1) + datetime.timedelta(minutes=random.randrange(60 * 365 * 1440))
    kind = random.choice([ONCE, DAILY, WEEKLY, BY_DATE, BY_WEEKDAY, WEEKLY, BY_DATE, BY_WEEKDAY])
    weekdays = random.randrange(1, 128)
    months = random.choice([0xFFF, 1 << random.randrange(12), random.randrange(1, 0x1000)])
    values = {
        ONCE: (0, 0, 0),
        DAILY: (random.randrange(1, 60), 0, 0),
        WEEKLY: (random.randrange(1, 9), weekdays, 0),
        BY_DATE: (random.choice([1 << random.randrange(31), random.randrange(1, 1 << 31)]), months, 0),
        BY_WEEKDAY: (random.randrange(1, 6), weekdays, months),
    }[kind]
    if kind == BY_DATE and months == 2 and values[0] >= 1 << 28:
        values = (1 << 28, 2, 0)  # dateutil looks for 30 February until the year 9999
    end = begin.date() + datetime.timedelta(days=random.randrange(2000)) if random.random() < 0.4 else None
    interval = duration = 0
    if random.random() < 0.4:
        interval = random.choice([1, 5, 15, 60, 60, 90, 1000, random.randrange(1, 5000)])
        duration = random.randrange(interval + 1, interval * 12 + 2)
    return kind, begin, end, interval, duration, values


def base_starts(kind, begin, values):
    if kind == ONCE:
        return rrule.rrule(rrule.DAILY, begin, count=1)
    if kind == DAILY:
        return rrule.rrule(rrule.DAILY, begin, interval=values[0])
    if kind == WEEKLY:
        days = [WEEKDAYS[i] for i in bits(values[1])]
        return rrule.rrule(rrule.WEEKLY, begin, interval=values[0], wkst=rrule.SU, byweekday=days)
    if kind == BY_DATE:
        return rrule.rrule(rrule.MONTHLY, begin, bymonth=[i + 1 for i in bits(values[1])],
                           bymonthday=[i + 1 for i in bits(values[0])])
    week = -1 if values[0] == 5 else values[0]
    days = [WEEKDAYS[i](week) for i in bits(values[1])]
    return rrule.rrule(rrule.MONTHLY, begin, bymonth=[i + 1 for i in bits(values[2])], byweekday=days)


def expected_starts(kind, begin, end, interval, duration, values):
    """The first starts in their order, and whether they are all; a start that a later day could still precede is
    left out."""
    last = datetime.datetime.combine(end, datetime.time.max) if end else datetime.datetime.max
    starts, complete_before = set(), datetime.datetime.max
    for number, base in enumerate(itertools.islice(base_starts(kind, begin, values), 3 * STARTS + 1)):
        if number == 3 * STARTS:
            complete_before = base
            break
        for after in range(0, duration, interval) if interval else [0]:
            starts.add(base + datetime.timedelta(minutes=after))
    return sorted(start for start in starts if start <= last and start < complete_before), last < complete_before


def main():
    program = sys.argv[1]
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    random.seed(seed)
    questions, answers = [], []
    for _ in range(TRIGGERS):
        trigger = random_trigger()
        kind, begin, end, interval, duration, values = trigger
        starts, all_there = expected_starts(*trigger)
        # From the begin, or from some moment between two starts.
        first = random.randrange(len(starts)) if starts and random.random() < 0.7 else 0
        moment = begin
        if first > 0:
            gap = starts[first] - starts[first - 1]
            moment = starts[first] - datetime.timedelta(seconds=random.randrange(int(gap.total_seconds())))
        wanted = starts[first:first + STARTS]
        numbers = [kind, begin.year, begin.month, begin.day, begin.hour, begin.minute,
                   *((end.year, end.month, end.day) if end else (0, 0, 0)), interval, duration, *values,
                   int((moment - EPOCH).total_seconds()), STARTS if all_there else len(wanted)]
        questions.append(" ".join(map(str, numbers)))
        answers.append([int((start - EPOCH).total_seconds()) for start in wanted])
    output = subprocess.run([program], input="\n".join(questions) + "\n", stdout=subprocess.PIPE, check=True,
                            text=True, timeout=60).stdout.splitlines()
    wrong = 0
    for question, answer, line in zip(questions, answers, output, strict=True):
        if list(map(int, line.split())) != answer:
            wrong += 1
            print(f"seed {seed}: {question}\n  expected {answer}\n  found    {line}")
    print(f"{len(questions)} triggers, {sum(map(len, answers))} starts, {wrong} wrong")
    return wrong != 0 or sum(map(len, answers)) < TRIGGERS


if __name__ == "__main__":
    sys.exit(main())
