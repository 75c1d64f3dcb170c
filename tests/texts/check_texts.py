#!/usr/bin/env python3
"""check_texts.py SOURCES ZELMAR01.TS: every French text of the sources can be translated.

A literal counts as a text when it has a French letter or two words in a row. What is none stands in NO_TEXT.
"""
import pathlib
import re
import sys
import xml.etree.ElementTree as xml

STRING = r'"(?:[^"\\\n]|\\.)*"'
# Comments, preprocessor lines and characters are matched to be passed over.
TOKEN = re.compile(rf'//[^\n]*|/\*.*?\*/|^[ \t]*#[^\n]*|\'(?:[^\'\\]|\\.)+\'|((?:(?:u|u8|L)?{STRING}(?:_s)?\s*)+)',
                   re.S | re.M)
TEXT = re.compile(r'[à-öø-ÿÀ-Öœ]|[A-Za-z]{2,} [A-Za-z]{2,}')
NO_TEXT = re.compile(
    r'select |insert into |update |delete from |savepoint |release |rollback |save transaction |set |pragma |'
    r' ?order by| default values|\) values|FROM |SYSTEM AGENT COM WINDOW|TfmPanelVide TriGrilleColonne|'
    r' is null|BenguiatGothic Medium|too many values to sort|zelmar01-job-runner is started|Par défaut|mercredi 30 septembre', re.I)


def literals(path):
    source = path.read_text(encoding='utf-8')
    for match in TOKEN.finditer(source):
        if match.group(1):
            text = ''.join(part[1:-1] for part in re.findall(STRING, match.group(1)))
            text = re.sub(r'\\(.)', lambda m: {'n': '\n', 'r': '\r', 't': '\t'}.get(m.group(1), m.group(1)), text)
            yield source.count('\n', 0, match.start()) + 1, text


def text_of(node):
    return (node.text or '') + ''.join(chr(int(byte.get('value')[1:], 16)) + (byte.tail or '') for byte in node)


def main(sources, texts):
    known = {text_of(node) for node in xml.parse(texts).iter('source')}
    lost = [f'{path}:{line}: {text!r}'
            for path in sorted(pathlib.Path(sources).rglob('*'))
            if path.suffix in ('.h', '.cpp')
            for line, text in literals(path)
            if TEXT.search(text) and not NO_TEXT.match(text) and text not in known]
    print('\n'.join(lost) or f'{len(known)} texts')
    return 1 if lost else 0


sys.exit(main(*sys.argv[1:]))
