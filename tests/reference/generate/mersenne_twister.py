#!/usr/bin/env python3
"""Writes ../random/InitByArray.csv: draws of Python's own MT19937, which seeds itself with an array of 32-bit words."""
import os
import random

PLACES = [0, 1, 2, 3, 396, 397, 623, 624, 625, 1247, 1248, 99999]
HEAD = """\
# function  KwRandomTwister::InitByArray(key, length)          columns  length place draw
# source    generate/mersenne_twister.py, the module random of Python; a whole number as seed is an array of words, the
#           lowest first
# digits    draw number place after seeding, counted from 0; key[j] = 2891336453 j + 291 modulo 2^32
# tolerance EXACT
"""

path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "random", "InitByArray.csv")
with open(path, "w", encoding="utf-8") as file:
    file.write(HEAD + "length,place,draw\n")
    for length in [1, 2, 3, 4, 622, 623, 624, 625, 1000, 1249]:
        words = [(2891336453 * j + 291) % 2**32 for j in range(length)]
        generator = random.Random(sum(word << 32 * j for j, word in enumerate(words)))
        draws = [generator.getrandbits(32) for _ in range(PLACES[-1] + 1)]
        for place in PLACES:
            file.write(f"{length},{place},{draws[place]}\n")
