#!/usr/bin/env python3
"""Writes the same translations twice: as a translation file of the program and as the source of a catalogue.

bench/make-translations.py COUNT TRANSLATION_FILE CATALOGUE_SOURCE

Sentences of 5 to 12 words with a variable, each with a number of its own, in an order that is not that of their
bytes. The same COUNT always gives the same bytes."""

import random
import sys

ENGLISH = ("action restart computer user client time message before after system save work shutdown dialog button "
           "pending deadline minutes hours administrator request file session").split()
GERMAN = ("Aktion Neustart Rechner Benutzer Agent Zeit Nachricht bevor später System sichern Arbeit Abschaltung "
          "Fenster Schaltfläche ausstehend Frist Minuten Stunden Verwalter Anfrage Datei Sitzung").split()


def sentence(randomness, words, number):
    chosen = randomness.choices(words, k=randomness.randint(5, 12))
    return f"{' '.join(chosen).capitalize()} {{x}} {number}."


def main():
    count, translations, catalogue = int(sys.argv[1]), sys.argv[2], sys.argv[3]
    randomness = random.Random(1)
    entries = [(sentence(randomness, ENGLISH, n), sentence(randomness, GERMAN, n)) for n in range(count)]
    randomness.shuffle(entries)
    with open(translations, "w", encoding="utf-8") as file:
        file.writelines(f"{key}\t{value}\n" for key, value in entries)
    with open(catalogue, "w", encoding="utf-8") as file:
        file.write('msgid ""\nmsgstr "Content-Type: text/plain; charset=UTF-8\\n"\n')
        file.writelines(f'msgid "{key}"\nmsgstr "{value}"\n' for key, value in entries)


if __name__ == "__main__":
    main()
