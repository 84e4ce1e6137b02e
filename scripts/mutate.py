#!/usr/bin/env python3
"""Asks the tests whether they notice: changes the code in small ways, one at a time, and runs them.

  scripts/mutate.py --count 100 --seed 3     a sample of the library, spread over its files
  scripts/mutate.py --all --only text.cpp    every change of some files
  scripts/mutate.py --again FILE             what survived in the results FILE, asked once more
  scripts/mutate.py --list ...               the changes alone

A change replaces an operator, a constant or a character, or drops a statement. It survives when
every test passes: then a test is missing, or the code can be simpler, or the change changes nothing
that anybody can see. No part of the suite: a change takes some two seconds, a survivor a minute.
One that doesn't compile is passed over.

The work is done on a copy of the checkout below --work, where the debug preset builds it. Nothing
else can be written to or killed, whatever a changed program does: it runs in namespaces of its own,
which needs Linux and root's rights, with a bounded memory, and not for ever.

A change is first put to the tests that share its file's name, then to the programs of its room,
then to all others but the slow ones, which --room leaves out. The results FILE (--results) gets a
line of JSON a change; a run that is started again with it goes on behind the last. --minutes ends a
run between two changes.
"""
import argparse
import hashlib
import json
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

OPERATORS = [
    (r'==', '!='), (r'!=', '=='), (r'(?<![<\-=])<(?![<=])(?= )', '<='), (r'<=', '<'),
    (r'(?<![\->=])>(?![>=])(?= )', '>='), (r'>=', '>'), (r'&&', '||'), (r'\|\|', '&&'),
    (r' \+ ', ' - '), (r' - ', ' + '), (r'\+=', '-='), (r'-=', '+='),
    (r' / ', ' * '), (r' \* ', ' / '),
    (r'\btrue\b', 'false'), (r'\bfalse\b', 'true'), (r'!(?=[a-z])', ''),
    (r'\bcontinue;', 'break;'), (r'\bbreak;', 'continue;'),
    (r'\bstd::min\b', 'std::max'), (r'\bstd::max\b', 'std::min'),
    (r'\b0\b', '1'), (r'\b[1-9]\d*\b', lambda digits: str(int(digits) + 1)),
    (r'\b0x[0-9A-F]+\b', lambda digits: hex(int(digits, 16) + 1)),
]
CHARACTER = re.compile(r"'(?:\\.[0-9A-Fa-f]*|[^'\\])'")
LITERAL = re.compile(r'(?<!R)"(?:[^"\\]|\\.)+"')
STATEMENT = re.compile(r'\s+(?:[a-z][\w.:\->]*\(.*\)|[a-z][\w.\->\[\]]* [-+|]?= .*|return);')
NO_CODE = ('#', 'static_assert', 'template', 'using', 'extern')

# Rows and layouts that the compiler or a test of the whole table checks; other platforms' sources.
LEFT_OUT = r'_win32\.cpp$|crop_factor_rows|record_layout|xmp_namespaces'

# Asked only about changes of their own room.
SLOW = r'real_exiftool|report|shell|stress|handles|packaging|photo_tool_getter|hostile'

MEMORY = 16 << 30
LARGEST_FILE = 8 << 30  # a test makes one of 4 GB that holds nothing, and maps it


# ---- changes

class Change:
    def __init__(self, file, line, begin, end, other, before):
        self.file, self.line, self.begin, self.end = file, line, begin, end
        self.other, self.before = other, before

    @property
    def after(self):
        return self.before[:self.begin] + self.other + self.before[self.end:]

    @property
    def identity(self):
        return '%s:%d:%d-%d %s' % (self.file, self.line, self.begin, self.end, self.other)

    def __str__(self):
        return '%s:%d  %s  ->  %s' % (self.file, self.line, self.before.strip(), self.after.strip())


def code_of(line):
    """The line without a comment behind it."""
    return re.split(r'(?<!:)//', line)[0].rstrip()


def changes_of_line(line):
    code = code_of(line)
    if not code or code.lstrip().startswith(NO_CODE):
        return
    texts = [match.span() for match in LITERAL.finditer(code)]
    texts += [match.span() for match in CHARACTER.finditer(code)]
    for pattern, other in OPERATORS:
        for match in re.finditer(pattern, code):
            if not any(begin <= match.start() < end for begin, end in texts):
                yield (*match.span(), other(match.group()) if callable(other) else other)
    for match in CHARACTER.finditer(code):
        yield (*match.span(), "'#'")
    for match in LITERAL.finditer(code):
        yield match.end() - 2 - (code[match.end() - 3] == '\\'), match.end() - 1, ''
    if STATEMENT.fullmatch(code):
        yield len(code) - len(code.lstrip()), len(code), ';'


def changes_of_file(file):
    for number, line in enumerate((ROOT / file).read_text().split('\n'), 1):
        for begin, end, other in changes_of_line(line):
            yield Change(file, number, begin, end, other, line)


def tracked_files():
    listed = subprocess.run(['git', '-c', 'safe.directory=*', '-C', ROOT, 'ls-files', '-z'],
                            capture_output=True, text=True, check=True).stdout
    return [name for name in listed.split('\0') if name and (ROOT / name).is_file()]


def all_changes(only):
    changes = []
    for file in tracked_files():
        if file.endswith(('.cpp', '.h')) and re.search(only, file):
            changes += [] if re.search(LEFT_OUT, file) else changes_of_file(file)
    return changes


def sample(changes, count, seed):
    """One of each file, as far as the count goes, and the rest from wherever most is decided."""
    shuffled = list(changes)
    random.Random(seed).shuffle(shuffled)
    seen = set()
    first = [c for c in shuffled if not (c.file in seen or seen.add(c.file))]
    chosen = {c.identity: c for c in (first + shuffled)}
    return list(chosen.values())[:count]


def survivors(results):
    """The changes of a results file that nobody noticed, where their lines stand today."""
    for record in results:
        if record['outcome'] != 'SURVIVED':
            continue
        lines = (ROOT / record['file']).read_text().split('\n')
        same = [n for n, line in enumerate(lines, 1) if line == record['before']]
        if not same:
            print('gone      %(file)s:%(line)d  %(before)s' % record)
            continue
        number = min(same, key=lambda n: abs(n - record['line']))
        yield Change(record['file'], number, record['begin'], record['end'], record['other'],
                     record['before'])


# ---- the copy and its programs

class Copy:
    """A copy of the checkout, its build, and what is known of its test programs."""

    def __init__(self, work):
        self.work = work
        self.root = work / 'project'
        self.build = self.root / 'build' / 'debug'
        self.scratch = work / 'scratch'
        self.scratch.mkdir(parents=True, exist_ok=True)
        self.synchronise()
        self.configure()
        self.tests = self.read_tests()
        self.times_file = work / 'times.json'
        self.measured = {}  # by program: the digest and the seconds of an earlier run
        if self.times_file.is_file():
            self.measured = json.loads(self.times_file.read_text())
        self.times = {}

    def synchronise(self):
        wanted = set(tracked_files())
        for name in sorted(wanted):
            content = (ROOT / name).read_bytes()
            target = self.root / name
            if not target.is_file() or target.read_bytes() != content:
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / name, target)
        for target in self.root.rglob('*'):
            name = target.relative_to(self.root)
            if name.parts[0] != 'build' and target.is_file() and str(name) not in wanted:
                target.unlink()
        self.borrow(ROOT / 'build' / 'libexiv2', self.root / 'build' / 'libexiv2')
        photos = ROOT.parent / 'shared' / 'photos'
        if photos.is_dir() and not (self.work / 'shared').exists():
            shutil.copytree(photos, self.work / 'shared' / 'photos')

    @staticmethod
    def borrow(folder, link):
        if folder.is_dir() and not link.exists():
            link.parent.mkdir(parents=True, exist_ok=True)
            link.symlink_to(folder.resolve())

    def configure(self):
        """The debug preset, but each changed file compiled alone, by headers that are compiled
        already, and a fast linker."""
        headers = set()
        for source in (self.root / 'exiv2_wrapper').rglob('*'):
            if source.suffix in ('.cpp', '.h') and 'win32' not in source.name:
                headers |= set(re.findall(r'^#include (<[a-z_]+>)$', source.read_text(), re.M))
        text = self.precompiling('exiv2_wrapper_objects', sorted(headers))
        if (self.root / 'build' / 'libexiv2').is_dir():
            text += self.precompiling('exiv2_tool_parts', ['<exiv2/exiv2.hpp>', '<sstream>'])
        precompile = self.work / 'precompile.cmake'
        if not precompile.is_file() or precompile.read_text() != text:
            precompile.write_text(text)
        linker = '-fuse-ld=mold' if shutil.which('mold') else ''
        self.require('cmake', '-S', self.root, '--preset', 'debug',
                     '-DCMAKE_PROJECT_exiv2_wrapper_INCLUDE=%s' % precompile,
                     '-DCMAKE_EXE_LINKER_FLAGS=%s' % linker,
                     '-DCMAKE_SHARED_LINKER_FLAGS=%s' % linker)

    @staticmethod
    def precompiling(target, headers):
        names = ' '.join('[[%s]]' % header for header in headers)
        call = 'cmake_language(DEFER DIRECTORY "${CMAKE_SOURCE_DIR}" CALL\n  %s)\n'
        return (call % ('set_target_properties %s PROPERTIES UNITY_BUILD OFF' % target) +
                call % ('target_precompile_headers %s PRIVATE %s' % (target, names)))

    def require(self, *command):
        done = subprocess.run(command, cwd=self.root, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(done.stdout[-4000:] + done.stderr + 'the unchanged project does not build')

    def read_tests(self):
        """The suite's programs by name, with the environment and the folder of their start."""
        listed = subprocess.run(['ctest', '--test-dir', self.build, '--show-only=json-v1'],
                                capture_output=True, text=True, check=True).stdout
        tests = {}
        for test in json.loads(listed)['tests']:
            if test['name'].endswith('_tests'):  # the others run no program of ours
                named = {p['name']: p['value'] for p in test.get('properties', [])}
                tests[test['name']] = named.get('ENVIRONMENT', []), named['WORKING_DIRECTORY']
        return tests

    def builds(self, program):
        ninja = subprocess.run(['ninja', '-C', self.build, program], capture_output=True)
        return ninja.returncode == 0

    def measure(self, programs):
        """How long the unchanged programs take, which must pass."""
        self.require('ninja', '-j', str(os.cpu_count()), '-C', self.build, *programs)
        for program in programs:
            digest = hashlib.sha256((self.build / 'bin' / program).read_bytes()).hexdigest()
            if self.measured.get(program, [None])[0] != digest:
                begin = time.monotonic()
                failure = self.failure_of(program, [], 1200)
                if failure:
                    sys.exit('the unchanged project fails %s: %s' % (program, failure))
                self.measured[program] = digest, time.monotonic() - begin
                self.times_file.write_text(json.dumps(self.measured))
            self.times[program] = self.measured[program][1]

    def failure_of(self, program, options, timeout):
        """What failed in a program's tests, for a reader; none when they passed."""
        environment, folder = self.tests[program]
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(exist_ok=True)
        variables = dict(os.environ, TMPDIR=str(self.scratch), HOME=str(self.scratch))
        variables.update(variable.split('=', 1) for variable in environment)
        command = [self.build / 'bin' / program, '--gtest_fail_fast', '--gtest_brief=1', *options]
        with open(self.work / 'output', 'wb+') as output:
            process = subprocess.Popen(
                contained(self.work, command), cwd=folder, env=variables, stdout=output,
                stdin=subprocess.DEVNULL, stderr=subprocess.STDOUT, preexec_fn=limit,
                start_new_session=True)
            try:
                code = process.wait(timeout)
            except subprocess.TimeoutExpired:
                return 'time-out'
            finally:
                process.kill()
                process.wait()
            output.seek(0)
            failed = re.search(rb'\[  FAILED  \] ([^\s,]+)', output.read())
            if code == 0:
                return None
            return failed.group(1).decode() if failed else 'exit code %d' % code


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (LARGEST_FILE, LARGEST_FILE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def contained(folder, command):
    """The command where only `folder` and a /tmp of its own can be written to, and where only its own
    processes live."""
    script = '''
        [[ $0 == /tmp/* ]] || mount -t tmpfs none /tmp
        mount --bind "$0" "$0" && mount -o remount,bind,ro / && cd "$PWD" && "$@"
        exit $?  # or the shell would make way for the program, and nobody would reap its children
    '''
    return ['unshare', '--mount', '--pid', '--fork', '--kill-child', '--mount-proc',
            'bash', '-c', script, str(folder)] + [str(word) for word in command]


# ---- which tests are asked

class Rooms:
    """The test programs by folder of tests/, which mirrors the folders of the code."""

    def __init__(self, root, programs):
        self.root, self.programs = root, programs

    def folder_of(self, file):
        parts = Path(file).parent.parts[1:]
        while parts and not (self.root / 'tests' / Path(*parts) / 'CMakeLists.txt').is_file():
            parts = parts[:-1]
        return self.root / 'tests' / Path(*parts) if parts else None

    def sources_by_program(self, folder):
        text = (folder / 'CMakeLists.txt').read_text()
        sources = {}
        call = r'(?:exiv2_wrapper_add_\w+|target_sources)\(\s*(\w+)([^()]*)'
        for name, listed in re.findall(call, text):
            if name in self.programs:
                sources.setdefault(name, set()).update(re.findall(r'\w+\.cpp', listed))
        return sources

    def programs_of(self, file, times):
        folder = self.folder_of(file)
        programs = [] if folder is None else list(self.sources_by_program(folder))
        return sorted(programs, key=lambda program: times.get(program, 0))

    def namesakes_of(self, file):
        """Programs with the test suites that are named after the file."""
        folder = self.folder_of(file)
        name = re.escape(re.sub(r'_posix$', '', Path(file).stem)) + r'(_\w+)?_test\.cpp'
        for program, sources in ({} if folder is None else self.sources_by_program(folder)).items():
            suites = set()
            for source in sources:
                if re.fullmatch(name, source):
                    text = (folder / source).read_text()
                    suites |= set(re.findall(r'^TEST(?:_F|_P)?\(\s*(\w+)', text, re.M))
            if suites:
                tests = ':'.join('%s.*:*/%s.*' % (suite, suite) for suite in sorted(suites))
                yield program, ['--gtest_filter=' + tests]


class Questions:
    def __init__(self, copy, is_room_enough):
        self.copy = copy
        self.rooms = Rooms(copy.root, copy.tests)
        others = [name for name in copy.tests if not re.search(SLOW, name)]
        self.others = [] if is_room_enough else others

    def programs_for(self, changes):
        needed = set(self.others)
        for file in {change.file for change in changes}:
            needed |= set(self.rooms.programs_of(file, {}))
        return sorted(needed)

    def stages(self, file):
        times = self.copy.times
        own = self.rooms.programs_of(file, times)
        yield from self.rooms.namesakes_of(file)
        for program in own + sorted(set(self.others) - set(own), key=lambda name: times[name]):
            yield program, []

    def outcome(self, file):
        """Whether the tests notice what the copy's file has become, and which did."""
        is_built = False
        for program, options in self.stages(file):
            if not self.copy.builds(program):
                return ('noticed', 'the build of ' + program) if is_built else ('no code', None)
            is_built = True
            failure = self.copy.failure_of(program, options, 2 * self.copy.times[program] + 10)
            if failure:
                return 'noticed', program + ': ' + failure
        return 'SURVIVED', None


def ask(copy, questions, change):
    path = copy.root / change.file
    text = path.read_text()
    lines = text.split('\n')
    lines[change.line - 1] = change.after
    path.write_text('\n'.join(lines))
    try:
        return questions.outcome(change.file)
    finally:
        path.write_text(text)


# ---- the run

def read_results(file):
    if file is None or not file.is_file():
        return []
    return [json.loads(line) for line in file.read_text().splitlines()]


def run(args, changes):
    """Asks about the changes that the results lack, and returns all results."""
    results = read_results(args.results)
    done = {record['identity'] for record in results}
    end = time.monotonic() + 60 * args.minutes
    copy = Copy(args.work.resolve())
    questions = Questions(copy, args.room)
    left = [change for change in changes if change.identity not in done]
    copy.measure(questions.programs_for(left))
    for change in sorted(left, key=lambda c: (c.file, c.line, c.begin)):
        if time.monotonic() > end:
            print('not asked: %d' % (len(changes) - len(results)))
            break
        begin = time.monotonic()
        outcome, by = ask(copy, questions, change)
        seconds = time.monotonic() - begin
        if outcome != 'no code':
            remark = '%s%.1f s' % (by + ', ' if by else '', seconds)
            print('%-8s  %s  (%s)' % (outcome, change, remark), flush=True)
        results.append(dict(vars(change), identity=change.identity, outcome=outcome, by=by,
                            seconds=round(seconds, 1)))
        with open(args.results or os.devnull, 'a', encoding='utf-8') as file:
            file.write(json.dumps(results[-1]) + '\n')
    return results


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--count', type=int, default=100)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--all', action='store_true', help='no sample: every change')
    parser.add_argument('--only', default='^exiv2_wrapper/.*cpp$', metavar='REGEX', help='files')
    parser.add_argument('--again', type=Path, metavar='FILE')
    parser.add_argument('--room', action='store_true', help='ask the tests of the room alone')
    parser.add_argument('--results', type=Path, metavar='FILE')
    parser.add_argument('--minutes', type=float, default=float('inf'))
    parser.add_argument('--work', type=Path, default=ROOT / 'build' / 'mutation', metavar='FOLDER')
    parser.add_argument('--list', action='store_true', help='only print the changes')
    args = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))

    if args.again:
        changes = list(survivors(read_results(args.again)))
    else:
        changes = all_changes(args.only)
        changes = changes if args.all else sample(changes, args.count, args.seed)
    if args.list:
        print('\n'.join(map(str, changes)))
        return 0
    if subprocess.run(contained(ROOT, ['true']), capture_output=True).returncode != 0:
        sys.exit('a changed program could write and kill anywhere: this needs Linux, and root')
    outcomes = [record['outcome'] for record in run(args, changes)]
    noticed = outcomes.count('noticed')
    print('%d of %d noticed' % (noticed, noticed + outcomes.count('SURVIVED')))
    return 0


if __name__ == '__main__':
    sys.exit(main())
