"""Compares the manual page and the completions of tamarok with what `tamarok --help` says: commands and options.

Usage: completions_test.py PROGRAM SHARE WORKBENCH_MANUAL
"""

import re
import subprocess
import sys

OPTION = re.compile(r"^  (?:-[a-z],)?(--[a-z-]+)", re.MULTILINE)


def help_of(program, *command):
    return subprocess.run([program, *command, "--help"], check=True, capture_output=True, text=True).stdout


def commands_of(program):
    text = help_of(program)
    return set(re.findall(r"^  ([a-z]+) ", text[text.index("Subcommands:"):], re.MULTILINE))


def sections_of_manual(path):
    """The options that each section of the page explains, by the command's name; "" is the page's own."""
    sections = {"": set()}
    name = ""
    is_tagged = False
    for line in open(path, encoding="utf-8"):
        line = line.rstrip("\n").replace("\\-", "-")
        if line.startswith(".SS "):
            name = line[4:]
            sections[name] = set()
        elif line.startswith(".SH "):
            name = ""
        elif is_tagged:
            sections[name].update(re.findall(r"--[a-z-]+", line))
        is_tagged = line == ".TP"
    return sections


def bash_answers(script, *words):
    """What the completion offers behind the words; the last one is the beginning of a word."""
    quoted = " ".join(f"'{word}'" for word in words)
    run = (f"source '{script}'; COMP_WORDS=({quoted}); COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1)); _tamarok; "
           'printf "%s\\n" "${COMPREPLY[@]}"')
    answer = subprocess.run(["bash", "-c", run], check=True, capture_output=True, text=True).stdout
    return set(answer.split())


def zsh_sections(path):
    """The options of each command, with those of the lists that a command names by a variable."""
    text = open(path, encoding="utf-8").read()
    options = lambda part: set(re.findall(r"(--[a-z-]+)\[", part))
    variables = {name: options(value) for name, value in re.findall(r"^    local ([a-z]+)=(.*)$", text, re.MULTILINE)}
    variables["help"] = {"--help"}

    def with_variables(part):
        found = options(part)
        for name in re.findall(r"\$([a-z]+)", part):
            found |= variables.get(name, set())
        return found

    variables["composing"] = with_variables(re.search(r"composing=\((.*?)^    \)", text, re.DOTALL | re.MULTILINE)[1])
    body = text[text.index("case $command in"):]
    return {name: with_variables(part) for name, part in re.findall(r"^    ([a-z]+)\)(.*?);;", body, re.DOTALL | re.MULTILINE)}


def main():
    program, share, workbench_manual = sys.argv[1:]
    failures = []

    def expect(what, actual, expected):
        if actual != expected:
            failures.append(f"{what}: too much {sorted(actual - expected)}, missing {sorted(expected - actual)}")

    commands = commands_of(program)
    manual = sections_of_manual(f"{share}/tamarok.1")
    bash = f"{share}/tamarok.bash"
    zsh = zsh_sections(f"{share}/_tamarok")
    general = set(OPTION.findall(help_of(program)))

    expect("commands of the manual page", set(manual) - {""}, commands)
    expect("options of the manual page", manual[""], general)
    expect("commands of the bash completion", bash_answers(bash, "tamarok", ""), commands | general)
    expect("commands of the zsh completion", set(zsh), commands)
    text = open(f"{share}/_tamarok", encoding="utf-8").read()
    expect("described commands of the zsh completion", set(re.findall(r"^            '([a-z]+):", text, re.MULTILINE)), commands)
    for command in sorted(commands):
        options = set(OPTION.findall(help_of(program, command)))
        expect(f"manual page, {command}", manual.get(command, set()), options)
        expect(f"bash completion, {command}", bash_answers(bash, "tamarok", command, "-"), options)
        expect(f"zsh completion, {command}", zsh.get(command, set()), options)
    expect("values of --format", bash_answers(bash, "tamarok", "list", "--format", ""), {"table", "csv", "json"})
    expect("a value begun", bash_answers(bash, "tamarok", "types", "--lang", "G"), {"GERMAN"})
    expect("a pattern has no values", bash_answers(bash, "tamarok", "volume", "--format", ""), set())
    expect("a command begun", bash_answers(bash, "tamarok", "co"), {"copy", "columns"})
    if not commands or not general:
        failures.append("the help names no commands or no options")

    # The workbench's options are few; its page is compared with its source, since it needs a screen.
    source = open(f"{share}/../../workbench/main.cpp", encoding="utf-8").read()
    expect("options of the workbench", sections_of_manual(workbench_manual)[""],
           set(re.findall(r'add_option\("(--[a-z]+)"', source)) | {"--help"})

    for failure in failures:
        print(failure)
    return 1 if failures else 0


sys.exit(main())
