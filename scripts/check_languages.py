"""check_languages.py ENGLISH.rc LANGUAGE.rc...

Every text of the program's string table must stand in every language, with the same format marks and escapes
(%s, %d, \\n, \\t) in the same order. Names each text that does not.
"""
import re
import sys
from pathlib import Path

# For the system, not for a person.
technical = {'IDR_MAINFRAME'}


def texts(path, complain):
    """The string tables of a resource file: what stands between the quotes, by id."""
    found = {}
    for table in re.findall(r'^STRINGTABLE\nBEGIN\n(.*?)^END$', path.read_text('utf-8'), re.M | re.S):
        for line in table.splitlines():
            entry = re.fullmatch(r'\s*(\w+)\s+"((?:[^"]|"")*)"\s*', line)
            if entry and entry[1] in found:
                complain(entry[1], 'stands there twice')
            elif entry:
                found[entry[1]] = entry[2]
            elif line.strip() and not line.strip().startswith('//'):
                complain(line.strip(), 'is not a text (an id, and one text in quotes)')
    return found


def marks(text):
    return re.findall(r'%.?|\\.', text)


def main(english, languages):
    problems = []

    def check(path, wanted):
        def complain(what, why):
            problems.append(f'{path.parent.name}/{path.name}: {what}: {why}')

        try:
            found = texts(path, complain)
        except UnicodeDecodeError:
            complain('the file', 'is not UTF-8')
            return {}
        for text in wanted.keys() - found.keys() - technical:
            complain(text, 'is missing')
        for text, words in found.items():
            if wanted and text not in wanted:
                complain(text, f'is not among the texts of {english.name}')
            elif not words.removeprefix('\\n').strip():
                complain(text, 'is empty')
            elif marks(words) != marks(wanted.get(text, words)):
                complain(text, f'has {marks(words)}, not {marks(wanted[text])}')
        return found

    wanted = check(english, {})
    for path in languages:
        check(path, wanted)
    if not wanted:
        problems.append(f'{english}: no texts')
    print('\n'.join(sorted(problems)) or f'{len(wanted.keys() - technical)} texts in {len(languages)} languages')
    return 1 if problems else 0


if __name__ == '__main__':
    sys.exit(main(Path(sys.argv[1]), [Path(name) for name in sys.argv[2:]]))
