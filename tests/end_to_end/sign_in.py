#!/usr/bin/env python3
"""Each account of the local platform signs in in its own way, or is told why not; and a sign-in that cannot be kept.
"""
import support
from support import DONE, FAILED, NOT_SIGNED_IN, UNREACHABLE, Client, Platform, Workspace, expect

WAYS = [
    # the e-mail address, the password, the code, how it ends and what is said
    ("ben@northlight.example", "reel-two", "246810", DONE, ""),
    ("ben@northlight.example", "reel-two", "000000", NOT_SIGNED_IN, "That code is not right."),
    ("ben@northlight.example", "reel-two", None, FAILED, "There is no terminal to ask for the code. Use --code."),
    ("cleo@northlight.example", "reel-three", "135790", DONE, ""),
    ("dov@northlight.example", "reel-four", "135790", DONE, "JBSW Y3DP EHPK 3PXP"),
    ("eve@harbour.example", "", None, FAILED, "Your organisation's sign-in did not finish."),
    ("finn@harbour.example", "reel-six", None, DONE, ""),
    ("gus@harbour.example", "reel-seven", None, NOT_SIGNED_IN, "Your password needs renewing."),
    ("ada@northlight.example", "wrong", None, NOT_SIGNED_IN, "That email or password is not right."),
]


def each_account_signs_in_in_its_own_way():
    with Workspace() as workspace, Platform(workspace) as platform:
        for number, (email, password, code, expected, said) in enumerate(WAYS):
            client = Client(workspace, platform.address, f"home-{number}")
            result = expect(expected, client.enter(email, password, *(["--code", code] if code is not None else [])))
            assert said in result.error and not (password and password in result.error), f"{email}: {result}"
            who = client.run("whoami", "--json")
            assert (who.code == DONE) == (expected == DONE), f"{email}: {who}"
            assert expected != DONE or who.records()[0]["email"] == email, who


def a_platform_that_goes_away_after_the_password_is_said():
    with Workspace() as workspace, Platform(workspace) as platform:
        platform.break_with({"operation": "me", "action": "refuse", "times": 0})
        result = expect(UNREACHABLE, Client(workspace, platform.address).enter())
        assert "The connection was lost." in result.error, result


def what_cannot_be_kept_is_said():
    with Workspace() as workspace, Platform(workspace) as platform:
        client = Client(workspace, platform.address)
        for variable in "XDG_DATA_HOME", "XDG_CONFIG_HOME":
            blocked = workspace.path / variable
            blocked.write_text("")
            client.environment[variable] = str(blocked)
        result = expect(DONE, client.enter())
        assert "Signed in as" in result.out, result
        assert "Signed in, but only for now: “cookies” cannot be written: Not a directory." in result.error, result
        for words in ["site", "live"], ["downloads-folder", str(workspace.path)]:
            result = expect(FAILED, client.run(*words))
            assert "That counts only for now:" in result.error and "cannot be written." in result.error, result


support.main()
