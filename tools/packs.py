"""The form of a rule pack."""

import json
import re


def formatted(document):
    """The one form of a pack: two spaces a level, a list of texts in one line where it fits."""
    text = json.dumps(document, indent=2, ensure_ascii=False)

    def in_one_line(found):
        line = "[" + re.sub(r"\s*\n\s*", " ", found[2]).strip() + "]"
        return found[1] + line if len(found[1] + line) < 100 else found[0]

    text = re.sub(r'(?m)^(.*)\[((?:\n +"(?:[^"\\]|\\.)*",?)+)\n +\]', in_one_line, text)
    return text + "\n"
