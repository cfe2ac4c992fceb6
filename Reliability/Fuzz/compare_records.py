#!/usr/bin/env python3
"""Reads mutated records with Python's json and with our readers, and prints each that they see
differently. Arguments: the program that reads records, how many texts, and the seed."""

import json
import random
import subprocess
import sys
import threading

MODES = [
    '{"width":1440,"height":900,"isHiDPI":true,"refreshRate":60}',
    '{"width":1920,"height":1080,"isHiDPI":false,"refreshRate":0}',
    ' {"note":[1,{"a":null}],"refreshRate":144,"isHiDPI":false,"height":-1,"width":0}\n',
]
SHORTCUTS = [
    '{"keyCode":107,"modifiers":0}',
    '{"modifiers":1572864,"keyCode":3}',
    '{"keyCode":65535,"modifiers":18446744073709551615,"note":"\\u00e9\\ud83d\\ude00"}',
]
PIECES = [
    '0', '-0', '-', '+', '1.0', '1e2', '1E400', '-1e-400', '1e+5', '00', '01', '.5', '5.', '1e', '0x10',
    'NaN', 'Infinity', '-Infinity', 'null', 'true', 'false', 'True', 'nul',
    '9223372036854775807', '9223372036854775808', '-9223372036854775808', '-9223372036854775809',
    '18446744073709551615', '18446744073709551616', '65535', '65536', '1' * 40, '1' * 5000, '0.' + '3' * 400,
    '"', '\\', '\\"', '\\u0041', '\\ud800', '\\udc00', '\\ud83d\\ude00', '\\u12', '\\x', '\\/', '\t', '\x00',
    '\x7f', '\x1f', '\u00e9', '\u2028', '\U0001f600', '\ufeff', '{', '}', '[', ']', ',', ':', ' ', '\n', '\r',
    '\f', '\u00a0', '//', '/**/', "'", '{}', '[]', '[' * 50 + ']' * 50, '"a":1,', ',"a":{"b":[1e999]}',
    '"width":7,', ',"width":8', '"wi\\u0064th":9,', '"keyCode":7,', ',"keyCode":"8"', '"modifiers":-1,',
    ',"isHiDPI":0', ',"isHiDPI":true', '"Width":1,', '"width":1', '"":1,',
]
BYTES = [b'\xff', b'\xc0\xaf', b'\xed\xa0\x80', b'\xf4\x90\x80\x80', b'\xe2\x82', b'\x80', b'\xef\xbb\xbf']
DEEP = 20000


class Refused(Exception):
    pass


def refuse(constant):
    raise Refused(constant)


def has_lone_surrogate(value):
    """Without recursion: the value may be deep."""
    waiting = [value]
    while waiting:
        part = waiting.pop()
        if isinstance(part, str):
            if any('\ud800' <= letter <= '\udfff' for letter in part):
                return True
        elif isinstance(part, list):
            waiting += part
        elif isinstance(part, dict):
            waiting += part.keys()
            waiting += part.values()
    return False


def integer(text):
    """The digits of thousands would take long, and Python refuses them."""
    return int(text) if len(text) <= 40 else 10 ** 40


def record(data):
    """The members of the one object that the bytes are; nothing for anything else."""
    def members(pairs):
        # A lone surrogate counts also in a member that a later one of the same name replaces.
        if has_lone_surrogate([part for pair in pairs for part in pair if not isinstance(part, dict)]):
            raise Refused('surrogate')
        return dict(pairs)
    try:
        value = json.loads(data.decode('utf-8'), parse_constant=refuse, parse_int=integer,
                           parse_float=lambda text: None, object_pairs_hook=members)
    except (UnicodeDecodeError, json.JSONDecodeError, Refused):
        return None
    return value if isinstance(value, dict) else None


def is_integer(value, least, most):
    return type(value) is int and least <= value <= most


def mode(members):
    if members is None:
        return 'none'
    numbers = [members.get(name) for name in ('width', 'height', 'refreshRate')]
    density = members.get('isHiDPI')
    if type(density) is not bool or not all(is_integer(number, -2**63, 2**63 - 1) for number in numbers):
        return 'none'
    return f'{numbers[0]} {numbers[1]} {str(density).lower()} {numbers[2]}'


def shortcut(members):
    if members is None:
        return 'none'
    code, modifiers = members.get('keyCode'), members.get('modifiers')
    if not is_integer(code, 0, 65535) or not is_integer(modifiers, 0, 2**64 - 1):
        return 'none'
    return f'{code} {modifiers}'


def mutate(data, choice):
    """One change: a piece of JSON or a byte put in, taken out or put in another's place."""
    start = choice.randrange(len(data) + 1)
    kind = choice.randrange(6)
    if kind == 0:
        return data[:start] + choice.choice(PIECES).encode() + data[start:]
    if kind == 1:
        return data[:start] + data[start + choice.randrange(1, 6):]
    if kind == 2:
        return data[:start] + bytes([choice.randrange(256)]) + data[start + 1:]
    if kind == 3:
        return data[:start] + choice.choice(BYTES) + data[start:]
    if kind == 4:  # a value for another
        digits = [place for place in range(len(data)) if data[place:place + 1] == b':']
        if not digits:
            return data
        value = choice.choice(digits) + 1
        end = min((place for place in (data.find(b',', value), data.find(b'}', value)) if place >= 0),
                  default=len(data))
        return data[:value] + choice.choice(PIECES).encode() + data[end:]
    end = start + choice.randrange(20)
    return data[:end] + data[start:]  # a part twice


def texts(count, seed):
    choice = random.Random(seed)
    opening, closing = '[' * DEEP, ']' * DEEP
    yield f'{{"deep":{opening}{closing},"keyCode":1,"modifiers":2}}'.encode()
    yield f'{{"deep":{opening},"keyCode":1,"modifiers":2}}'.encode()
    for _ in range(count - 2):
        data = choice.choice(MODES + SHORTCUTS).encode()
        for _ in range(choice.choice((0, 1, 1, 1, 2, 2, 3, 5))):
            data = mutate(data, choice)
        yield data


def compare(reader, count, seed):
    data = list(texts(count, seed))
    given = ''.join(text.hex() + '\n' for text in data)
    answers = subprocess.run([reader], input=given, capture_output=True, text=True, check=True).stdout
    answers = answers.splitlines()
    readable = differences = 0
    for text, answer in zip(data, answers, strict=True):
        members = record(text)
        expected = f'mode {mode(members)} shortcut {shortcut(members)}'
        readable += expected != 'mode none shortcut none'
        if answer != expected:
            differences += 1
        if answer != expected and differences <= 20:
            print(f'{text[:200]!r}: "{answer}", by Python "{expected}"')
    few = readable < count // 10  # then the mutations would tell little
    print(f'records read like Python\'s json, seed {seed}\t{count} texts, {readable} of them records, '
          f'{differences} differences\tnone\t{"NOT HELD" if differences or few else "held"}')
    return 1 if differences or few else 0


def main():
    # Deep texts need a deep stack, which only a thread of our own has.
    threading.stack_size(512 * 1024 * 1024)
    sys.setrecursionlimit(10 * DEEP)
    status = []
    thread = threading.Thread(target=lambda: status.append(
        compare(sys.argv[1], int(sys.argv[2]), int(sys.argv[3]))))
    thread.start()
    thread.join()
    return status[0] if status else 1


if __name__ == '__main__':
    sys.exit(main())
