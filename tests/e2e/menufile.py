"""The menus of a program as its MainMenu.ui describes them."""

import re
import xml.etree.ElementTree


class Menu:
    """`key` opens it with Alt; `items` are (key, command, title). A sub-menu's command is None."""

    def __init__(self, key, items):
        self.key = key
        self.items = items


def key_of(title):
    found = re.search(r"&(\w)", title)
    return found.group(1).lower() if found else None


def text_of(element, name):
    found = element.find(f"./property[@name='{name}']/*")
    return found.text if found is not None else ""


def read_menus(path):
    bar = xml.etree.ElementTree.parse(path).getroot().find("./widget[@class='QMenuBar']")
    actions = {each.get("name"): each for each in bar.findall("./action")}
    return [Menu(key_of(text_of(menu, "title")), list(items_of(menu, actions)))
            for menu in bar.findall("./widget[@class='QMenu']")]


def items_of(menu, actions):
    parts = {each.get("name"): each for each in menu.findall("./widget")}
    for entry in menu.findall("./addaction"):
        action, part = actions.get(entry.get("name")), parts.get(entry.get("name"))
        if action is not None:
            title = text_of(action, "text")
            yield key_of(title), int(text_of(action, "tag") or 0), title.replace("&", "")
        elif part is not None:
            title = text_of(part, "title")
            yield key_of(title), None, title.replace("&", "")
