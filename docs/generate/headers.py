"""Reads the public headers: what they declare, and what their comments say of it.

The headers are regular. Blank lines separate their parts; a part is one comment and what it describes: a record, constants
or functions. What does not look so is an error, since nothing may be missing in what is made of it."""

import re
from dataclasses import dataclass
from pathlib import Path

COLUMNS = 120  # to which comments are filled


@dataclass
class Block:
    """A paragraph or a list item of a comment."""
    kind: str  # text, bullet, number or parameter
    column: int  # where its text begins
    label: str  # "record (out)" of a parameter
    text: str


@dataclass
class Field:
    type: str
    name: str
    size: str  # "[256]" of a text
    comment: str


@dataclass
class Record:
    name: str
    comment: list
    fields: list


@dataclass
class Function:
    returns: str
    name: str
    parameters: list


@dataclass
class Functions:
    """Functions that share a comment; mostly one."""
    comment: list
    functions: list


@dataclass
class Constants:
    comment: list
    values: list  # of name and value


class Header:
    def __init__(self, path):
        self.path = Path(path)
        text = self.path.read_text()
        self.name = re.search(r'^ \* (qmv(?:/\w+)?\.h) - ', text, re.M)[1]  # as it is included
        self.records, self.functions, self.constants, self.comment = [], [], [], []
        for comment, code in parts(text):
            self._add(blocks(comment), code)
        subject = self.comment[0].text.split(' - ', 1)[1]
        self.subject = re.match(r'[^:.]*', subject)[0]
        self.comment[0].text = subject[0].upper() + subject[1:]
        declared = len(re.findall(r'^QMV_API|^void HTRC_', text, re.M))
        if declared != sum(len(each.functions) for each in self.functions):
            raise ValueError(f'{path}: not every function is understood')

    def _add(self, comment, code):
        if code.startswith('#ifndef QMV_'):
            self.comment = comment
        elif code.startswith('typedef struct'):
            self.records.append(record(comment, code))
        elif values := re.findall(r'^#define (QMV_\w+) (\d+)$', code, re.M):
            self.constants.append(Constants(comment, values))
        elif found := [function(*each) for each in FUNCTION.findall(code)]:
            self.functions.append(Functions(comment, found))


def parts(text):
    """The parts of a header: a comment, and the code that it describes; either may be empty."""
    for part in text.split('\n\n'):
        yield re.fullmatch(r'(?:/\*(.*?)\*/\n?)?(.*)', part, re.S).groups('')


FUNCTION = re.compile(r'^(?:QMV_API )?((?:const )?\w+\*?) (\w+)\(([^;]*?)\)\s(?:QMV_NOEXCEPT|__attribute__[^;]*);', re.M)
FIELD = re.compile(r'  ((?:struct )?\w+\**) (\w+)(\[\d+\])?;(?: +/\* (.*) \*/)?')


def function(returns, name, parameters):
    return Function(returns, name, re.split(r',\s+', parameters))


def record(comment, code):
    lines = code.strip().splitlines()
    fields = [FIELD.fullmatch(line) for line in lines[1:-1]]
    if not all(fields):
        raise ValueError(f'{lines[0]}: not every field is understood')
    return Record(lines[-1][2:-1], comment, [Field(*(part or '' for part in each.groups())) for each in fields])


ITEM = re.compile(r' *(?:(- )|(\d+\. )|(?<=  )(\w+(?:, \w+)*(?: \((?:in|out|in, out)\))?)  +)(?=\S)')


OPENING = re.compile(r'(?:Returns|Owns|Differs|On failure)\b')


def blocks(comment):
    """The paragraphs and items of a comment, by its indentation. A line begins a paragraph behind an empty one, where the
    indentation ends, and behind the end of a sentence where its first word opens one or had room in the line before."""
    found, last = [], ''
    for line in comment.strip().splitlines():
        line = re.sub(r'^ ?\* ?', '', line)
        word = (line.split() or [''])[0]
        ended = last[-1:] in '.:' and (OPENING.match(line) or len(f' * {last} {word}') <= COLUMNS)
        if item := ITEM.match(line):
            kind = 'bullet' if item[1] else 'number' if item[2] else 'parameter'
            found.append(Block(kind, item.end(), item[3] or '', line[item.end():]))
        elif line and (ended or indent(line) < max(found[-1].column, indent(last))):
            found.append(Block('text', indent(line), '', line.strip()))
        elif line:
            found[-1].text += ' ' + line.strip()
        last = line
    return found


def indent(line):
    return len(line) - len(line.lstrip())
