# scripts/compare-rules.py: random recurrence rules, and what python3-dateutil makes of them.
#   compare-rules.py PROGRAM STORE [COUNT [SEED]] or PROGRAM STORE --store COUNT
#
# Made are the rules that RFC 5545 defines: each part only with the frequencies that may have it,
# numbers with weekdays only in monthly rules and yearly ones without BYWEEKNO, BYSETPOS only with
# another part. Where dateutil differs from RFC 5545:
# - It does not count a start that its rule does not give. It then gets a COUNT one lower, and the
#   start is added.
# - A rule with BYWEEKNO and no other part for days has all days of the week with it, not the
#   start's weekday alone. It gets that weekday.
# - It takes weekdays with and without numbers in one BYDAY as a day that is both. Not made.
# - Its BYSETPOS counts the first week of a weekly rule from the start on. Such a rule begins on a
#   first day of a week.
# - It does not know days of the next year's week 1 as those of week -52 or -53, and takes days of
#   the last year's week 52 for those of week 53 where that year began otherwise. Not made.
# - It refuses rules whose times never come. They have their start alone.
# Seconds of 60 are no time for Python. Not made.
import datetime
import itertools
import random
import subprocess
import sys
import types

from dateutil import rrule

Frequencies = ['YEARLY', 'MONTHLY', 'WEEKLY', 'DAILY', 'HOURLY', 'MINUTELY', 'SECONDLY']
Weekdays = ['MO', 'TU', 'WE', 'TH', 'FR', 'SA', 'SU']
Seconds = {'HOURLY': 3600, 'MINUTELY': 60, 'SECONDLY': 1}
Years = 3
Chunk = 1000

# So that a rule which never matches ends with the window and not in the year 9999.
bounded = types.SimpleNamespace(**vars(datetime))
rrule.datetime = bounded


def compact(moment):
    return moment.strftime('%Y%m%dT%H%M%S')


class Case:
    """One rule: what the program reads, and what dateutil gets."""

    def __init__(self, rng):
        self.rng = rng
        self.frequency = rng.choice(Frequencies)
        self.texts = []
        self.args = {'wkst': 0}
        self.from_ = datetime.datetime(rng.randint(1996, 2030), 1, 1)
        self.to = self.from_.replace(year=self.from_.year + Years) - datetime.timedelta(seconds=1)
        self.interval = self.choose_interval()
        self.start = self.choose_start()
        self.count = None
        self.until = None
        self.choose_parts()
        self.choose_end()
        rng.shuffle(self.texts)
        self.rule = ';'.join(['FREQ=' + self.frequency] + self.texts)
        self.line = ' '.join(map(compact, (self.start, self.from_, self.to))) + ' ' + self.rule

    def chance(self, of_hundred):
        return self.rng.random() * 100 < of_hundred

    def choose_interval(self):
        interval = 1
        if self.chance(50):
            most = {'YEARLY': 4, 'MONTHLY': 18, 'WEEKLY': 9, 'DAILY': 60}.get(self.frequency, 100)
            interval = self.rng.randint(1, most)
            if self.frequency in Seconds and self.chance(60):
                interval = self.rng.randint(1, 40 * 86400 // Seconds[self.frequency])
        return interval

    def choose_start(self):
        """A few thousand steps before the window's end at most, as dateutil takes each."""
        day = datetime.timedelta(days=1)
        begin = self.from_ - self.rng.choice([0, 0, 0, 300, 800]) * day
        if self.frequency in Seconds:
            steps = 400 if self.frequency == 'SECONDLY' else 3000
            reach = steps * self.interval * Seconds[self.frequency]
            begin = max(begin, self.to - datetime.timedelta(seconds=max(reach, 7200)))
        span = int((self.to - begin).total_seconds())
        start = begin + datetime.timedelta(seconds=self.rng.randrange(min(span, 400 * 86400)))
        if self.chance(70):
            start = start.replace(second=0)
        if self.chance(50):
            start = start.replace(minute=self.rng.choice([0, 15, 30]))
        return start

    def choose_list(self, values, most):
        return [self.rng.choice(values) for _ in range(self.rng.randint(1, most))]

    def add(self, name, argument, values):
        self.texts.append(name + '=' + ','.join(map(str, values)))
        self.args[argument] = values

    def add_numbers(self, of_hundred, name, argument, first, last, most, negative=False):
        if not self.chance(of_hundred):
            return
        values = list(range(first, last + 1))
        if negative:
            values += [-value for value in values]
        self.add(name, argument, self.choose_list(values, most))

    def choose_parts(self):
        frequency = self.frequency
        yearly = frequency == 'YEARLY'
        if self.interval != 1:
            self.texts.append('INTERVAL=%d' % self.interval)
        if self.chance(30):
            self.args['wkst'] = self.rng.randrange(7)
            self.texts.append('WKST=' + Weekdays[self.args['wkst']])
        self.add_numbers(25, 'BYMONTH', 'bymonth', 1, 12, 4)
        if yearly:
            self.add_numbers(25, 'BYWEEKNO', 'byweekno', 1, 51, 4, True)
        if yearly or frequency in Seconds:
            self.add_numbers(15, 'BYYEARDAY', 'byyearday', 1, 366, 40, True)
        if frequency != 'WEEKLY':
            self.add_numbers(30, 'BYMONTHDAY', 'bymonthday', 1, 31, 8, True)
        if self.chance(40):
            self.choose_weekdays()
        small = 3 if self.chance(90) else 12
        self.add_numbers(20, 'BYHOUR', 'byhour', 0, 23, small)
        self.add_numbers(20, 'BYMINUTE', 'byminute', 0, 59, small)
        self.add_numbers(20, 'BYSECOND', 'bysecond', 0, 59, small)
        if any(name.startswith('by') for name in self.args) and self.chance(25):
            most = self.rng.choice([2, 5, 31, 366])
            self.add_numbers(100, 'BYSETPOS', 'bysetpos', 1, most, 3, True)
            if frequency == 'WEEKLY':
                back = (self.start.weekday() - self.args['wkst']) % 7
                self.start -= datetime.timedelta(days=back)

    def choose_weekdays(self):
        days = self.choose_list(range(7), 4)
        most = {'YEARLY': 53, 'MONTHLY': 5}.get(self.frequency, 0)
        if most == 53 and 'bymonth' in self.args:
            most = 5
        if most and 'byweekno' not in self.args and self.chance(50):
            numbers = [self.rng.choice([-1, 1]) * self.rng.randint(1, most) for _ in days]
            pairs = zip(days, numbers)
            self.texts.append('BYDAY=' + ','.join('%d%s' % (n, Weekdays[d])
                                                  for d, n in zip(days, numbers)))
            self.args['byweekday'] = [rrule.weekday(d, n) for d, n in pairs]
        else:
            self.texts.append('BYDAY=' + ','.join(Weekdays[day] for day in days))
            self.args['byweekday'] = days

    def choose_end(self):
        kind = self.rng.randrange(100)
        if kind < 20:
            self.count = self.rng.choice([1, 2, 3, 10, 50, self.rng.randint(1, 1000)])
            self.texts.append('COUNT=%d' % self.count)
        elif kind < 35:
            span = int((self.to - self.start).total_seconds())
            self.until = self.start + datetime.timedelta(seconds=self.rng.randint(0, span + 1))
            self.texts.append('UNTIL=' + compact(self.until))

    def starts(self, count):
        """As dateutil finds them, in order, until the end of the window."""
        args = dict(self.args, interval=self.interval, until=self.until)
        days = ('byyearday', 'bymonthday', 'byweekday')
        if 'byweekno' in args and not any(name in args for name in days):
            args['byweekday'] = self.start.weekday()
        bounded.MAXYEAR = self.to.year
        try:
            rule = rrule.rrule(getattr(rrule, self.frequency), dtstart=self.start, count=count,
                               **args)
            return list(itertools.takewhile(lambda moment: moment <= self.to, rule))
        except ValueError:
            return []

    def answer(self):
        found = self.starts(self.count)
        if not found or found[0] != self.start:
            rest = self.starts(self.count - 1 if self.count else None) if self.count != 1 else []
            found = [self.start] + rest
        return [moment for moment in found if self.from_ <= moment]


def answers_of(program, cases):
    text = ''.join(case.line + '\n' for case in cases)
    run = subprocess.run([program], input=text, capture_output=True, text=True, check=True)
    return run.stdout.split('\n')[:len(cases)]


def compare(program, count, seed):
    rng = random.Random(seed)
    different = 0
    starts = 0
    for done in range(0, count, Chunk):
        cases = [Case(rng) for _ in range(min(Chunk, count - done))]
        for case, ours in zip(cases, answers_of(program, cases)):
            theirs = [moment.isoformat() for moment in case.answer()]
            starts += len(theirs)
            if ours.split() == theirs:
                continue
            different += 1
            if different <= 20:
                missing = sorted(set(theirs) - set(ours.split()))[:3]
                added = sorted(set(ours.split()) - set(theirs))[:3]
                print(case.line, 'lacks', missing, 'adds', added, flush=True)
        if sys.stderr.isatty():
            print('\r%d rules' % min(done + Chunk, count), end='', file=sys.stderr)
    print('%d rules, %d starts, %d rules differ (seed %d)' % (count, starts, different, seed))
    return different == 0


def checksum(starts):
    value = 0
    for start in starts:
        seconds = int((start - datetime.datetime(1899, 12, 30)).total_seconds())
        value = (value * 1000003 + seconds) % 2**64
    return value


def store(path, count):
    """A start, a window and a rule a line; behind a bar how many starts, and their checksum."""
    rng = random.Random(5545)
    with open(path, 'w') as file:
        made = 0
        while made < count:
            case = Case(rng)
            starts = case.answer()
            # Most of what is drawn is never or always, and says little.
            if not 2 <= len(starts) <= 3000:
                continue
            made += 1
            print('%s|%d %x' % (case.line, len(starts), checksum(starts)), file=file)


def main():
    program, path, *rest = sys.argv[1:]
    if rest and rest[0] == '--store':
        store(path, int(rest[1]))
        return 0
    count = int(rest[0]) if rest else 100000
    seed = int(rest[1]) if len(rest) > 1 else 13
    return 0 if compare(program, count, seed) else 1


sys.exit(main())
