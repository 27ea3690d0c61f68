"""The folder graph, as the CMakeLists.txt files under src/ have it."""
import pathlib
import re
import sys

top = pathlib.Path(__file__).resolve().parent.parent
source = top / "src"


def modules():
    """The folders by their modules' names, and what each module uses."""
    folders, uses = {}, {}
    for lists in source.glob("**/CMakeLists.txt"):
        text = re.sub(r"#.*", "", lists.read_text())
        if not (call := re.search(r"palvera_module\((\w+)([^)]*)\)", text)):
            continue
        folders[call[1]] = str(lists.parent.relative_to(source))
        used = re.search(r"\bUSES((?:\s+[a-z]+)+)", call[2])
        uses[call[1]] = set(used[1].split()) if used else set()
    return folders, uses


def closure(name, uses, way=()):
    """All that a module uses, directly or through what it uses. Ends the program where that leads back to itself."""
    if name in way:
        sys.exit(f"the folders use each other in a circle: {' > '.join([*way, name])}")
    reached = set()
    for used in uses.get(name, ()):
        reached |= {used} | closure(used, uses, (*way, name))
    return reached
