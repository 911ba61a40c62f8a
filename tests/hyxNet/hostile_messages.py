"""Requests that a client without good will sends, as lists of parts."""

import json

RIGHT = {"token": "secret"}


def nested(opening, closing, levels, token):
    start = '{"token": "secret", "x": ' if token else '{"x": '
    return (start + opening * levels + closing * levels + "}").encode()


def request(**fields):
    return [json.dumps(fields).encode()]


# No token, or a wrong one: whatever else is in it, nothing of it is followed.
STRANGERS = {
    "nothing": [b""],
    "an object": [b"{}"],
    "two parts": [b"{}", b"{}"],
    "two parts with the token": [b'{"token": "secret", "do": "stop"}', b"x"],
    "the token in the second part": [b"{}", b'{"token": "secret", "do": "stop"}'],
    "many parts": [b"x"] * 2000,
    "empty parts": [b"", b"", b""],
    "a number": [b"5"],
    "a text": [b'"secret"'],
    "a list": [b'["secret"]'],
    "a list around it": [b'[{"token": "secret", "do": "stop"}]'],
    "no JSON": [b"GET / HTTP/1.1\r\n\r\n"],
    "half an object": [b'{"do": "stop"'],
    "bytes": [bytes(range(256))],
    "zeros": [bytes(1000)],
    "a nested token": [b'{"x": {"token": "secret"}, "do": "stop"}'],
    "a token in a list": [b'{"token": ["secret"], "do": "stop"}'],
    "an object as token": [b'{"token": {"token": "secret"}, "do": "stop"}'],
    "a number as token": [b'{"token": 5, "do": "stop"}'],
    "true as token": [b'{"token": true, "do": "stop"}'],
    "half the token": request(token="secre", do="stop"),
    "more than the token": request(token="secret\0", do="stop"),
    "a long token": request(token="secret" * 10000, do="stop"),
    "lists in lists": [nested("[", "]", 100_000, False)],
    "objects in objects": [nested('{"a":', "}", 100_000, False)],
    "open brackets": [b"[" * 500_000],
    "a late wrong token": [b'{"token": "secret", "do": "stop", "token": "wrong"}'],
}
# With the token, and wrong all the same.
WRONG = {
    "deep lists": [nested("[", "]", 100_000, True)],
    "deep open lists": [b'{"token": "secret", "x": ' + b"[" * 100_000],
    "cut off": [b'{"token": "secret", "do": "stop"'],
    "no UTF-8": [b'{"token": "secret", "do": "\xff\xfe"}'],
    "a number to do": request(**RIGHT, do=5),
    "a list to do": request(**RIGHT, do=["stop"]),
    "a name of a million letters": request(**RIGHT, do="get", body="x" * 1_000_000),
    "a count beyond all": request(**RIGHT, do="step", count=10**30),
    "a text as count": request(**RIGHT, do="step", count="many"),
    "a fraction below one": request(**RIGHT, do="step", count=-0.5),
    "numbers as positions": request(**RIGHT, do="set", body="box", position="up"),
    "a number too large": [b'{"token": "secret", "do": "set", "body": "box", "position": [1e999, 0, 0]}'],
    "a list as function": request(**RIGHT, do="call", function=[1]),
}
