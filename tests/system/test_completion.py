"""What each shell offers behind `harvelctl`, by the script that `harvelctl completion` gives it."""

import os
import re
import subprocess
import unittest

from programs import BIN, Scene

# What is typed behind the program's name, and the words that are offered for the last of it. The current directory holds
# two loggers, ../one and "../a name" hold one, and the home directory none.
OFFERED = [
    ("lang", "language-template language-check"),
    ("--dir ../one lang", "language-template language-check"),
    ("--dir=../one lang", "language-template language-check"),
    ("--json lang", "language-template language-check"),
    ("completion ", "bash zsh fish"),
    ("--dir pu", "pumps"),
    ("show ", "1 2"),
    ("show 1 ", ""),
    ("list ", ""),
    ("--dir ../one show ", "1"),
    ("--dir=../one show ", "1"),
    ("show --dir ../one ", "1"),
    ("--json show --dir=../one ", "1"),
    ("--dir ../one show 1 ", ""),
    (r"--dir ../a\ name show ", "1"),
    ("--dir '../a name' show ", "1"),
    ('--dir "../a name" show ', "1"),
    ("--dir ~/one show ", "1"),
    ("--dir ~ show ", ""),
    ("clear --job x ", "1 2"),
    ("load ", "1 2"),
    ("load 1 pu", "pump.cmd pumps"),
    ("load 1 1", ""),
    ("--dir ../one load 1 pu", "pump.cmd pumps"),
    ("language-check pu", "pump.cmd pumps"),
    ("find --trace pu", "pump.cmd pumps"),
    ("find --", "--dir --json --trace --port --all --yes --password"),
    ("--dir ../one load 1 --j", "--json"),
    ("clear 1 --j", "--job --json"),
    ("add --model KR4", "KR400 KR45 KR41 KR40"),
    ("add --model=KR4", "KR400 KR45 KR41 KR40"),
    ("add --flow=", "NOFC SWFC HWFC"),
    ("add --flow ", "NOFC SWFC HWFC"),
    ("--dir x add --com 16", "16"),
    ("add --password ", ""),
    ("options SMTPS", "SMTPServerName= SMTPServerRequiresAuthentication= SMTPSender="),
    ("options Icons", ""),  # which the program keeps by itself
    ("options SMTPServerName=S", ""),
    ("options SMTPServerName=h SiteI", "SiteID="),
]

BASH = """source ../completion.bash; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _harvelctl
for word in "${COMPREPLY[@]}"; do echo "$word"; done"""

FISH = "source ../completion.fish; complete -C $argv"

# An interactive shell which completes as soon as it could be typed to, writes what matched, and ends.
ZSHRC = """autoload -Uz compinit; compinit -D -u
source ~/completion.zsh
compadd() { local -a matching; builtin compadd -O matching "$@"; offered+=($matching); builtin compadd "$@" }
zle-line-init() { BUFFER=$TYPED CURSOR=$#TYPED; zle complete-word; print -rl -- $offered >~/offered; exit }
zle -N zle-line-init
"""
ZSH = "zmodload zsh/zpty; zpty shell zsh -d -i; while zpty -r shell; do :; done"


class Completion(unittest.TestCase):
    def setUp(self):
        self.scene = self.enterContext(Scene())
        self.home = self.scene.scratch.name
        self.environment = dict(self.scene.environment, PATH=BIN + os.pathsep + os.environ["PATH"], ZDOTDIR=self.home,
                                TERM="vt100")
        for shell in ("bash", "zsh", "fish"):
            self.write("completion." + shell, self.done("completion", shell))
        self.write(".zshrc", ZSHRC)

    def done(self, *words):
        code, out, error = self.scene.run(*words)
        self.assertEqual((code, error), (0, ""))
        return out

    def write(self, name, text):
        with open(os.path.join(self.home, name), "w", encoding="utf-8") as file:
            file.write(text)

    def output(self, *words, **more):
        result = subprocess.run(words, check=True, cwd=self.scene.directory, env=dict(self.environment, **more),
                                capture_output=True, text=True, timeout=120)
        self.assertEqual(result.stderr, "")
        return result.stdout

    def bash(self, line):
        # Bash divides a line like this itself, and keeps the quotes.
        words = re.findall(r"""=|(?:\\.|"[^"]*"|'[^']*'|[^\s=])+|(?<=\s)$""", "harvelctl " + line)
        return self.output("bash", "-c", BASH, "bash", *words).splitlines()

    def fish(self, line):
        name = re.search(r"(--\w+=)?\S*$", line)[1] or ""  # is offered with its values
        rows = self.output("fish", "--no-config", "-c", FISH, "harvelctl " + line).splitlines()
        return [row.split("\t")[0].removeprefix(name).rstrip("/") for row in rows]

    def zsh(self, line):
        self.output("zsh", "-f", "-c", ZSH, TYPED="harvelctl " + line)
        with open(os.path.join(self.home, "offered"), encoding="utf-8") as file:
            offered = set(file.read().split())
        os.remove(file.name)
        option = re.search(r" -\S*$", " " + line)  # are offered without a dash too, where there is nothing else
        return [word for word in offered if option or not word.startswith("-")]

    def check(self, shell):
        os.mkdir(self.scene.path("pumps"))
        self.write("loggers/pump.cmd", "")
        for directory, host in (("loggers", "a"), ("loggers", "b"), ("one", "c"), ("a name", "d")):
            path = os.path.join(self.home, directory)
            os.makedirs(path, exist_ok=True)
            self.done("--dir", path, "add", "--model", "KR40", "--tcp", host + ":1")
        for line, words in OFFERED:
            with self.subTest(line):
                self.assertEqual(sorted(shell(line)), sorted(words.split()))

    def test_bash_offers_what_can_stand_there(self):
        self.check(self.bash)
        self.assertEqual(self.bash("options SMTPServerName="), [])  # the others offer what stands there already

    def test_fish_offers_what_can_stand_there(self):
        self.check(self.fish)

    def test_zsh_offers_what_can_stand_there(self):
        self.check(self.zsh)

    def test_all_shells_offer_the_same_commands(self):
        commands = sorted(self.bash(""))
        self.assertLess({"find", "check", "language-template", "completion", "unload"}, set(commands))
        self.assertEqual(sorted(self.fish("")), commands)
        self.assertEqual(sorted(self.zsh("")), commands)

    def test_the_scripts_are_what_their_shells_read(self):
        for shell in ("bash", "zsh", "fish"):
            self.output(shell, "-n", "../completion." + shell)
        self.output("shellcheck", "-s", "bash", "../completion.bash")


if __name__ == "__main__":
    unittest.main()
