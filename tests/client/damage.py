#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes a damaged copy of a store, and prints how many contacts have something on the damaged pages:
damage.py STORE COPY QUERY [log [frame]] [PRAGMA=VALUE] [old] [swap] [header] [free] [cut]

QUERY answers the pages that are to hold noise. The copy takes over the log, or one with a damaged beginning, or gets a setting that only a new file
takes, or the table of an older version. Then two pages change places, the header or the list of free pages becomes
noise, or the last third is cut off."""
import os
import random
import shutil
import sqlite3
import sys

source, target, query, *doing = sys.argv[1:]
noise = random.Random(1)


def made_anew(statement):
    dump = "\n".join(sqlite3.connect(target).iterdump())
    os.remove(target)
    store = sqlite3.connect(target)
    store.executescript(f"PRAGMA {statement}; {dump}")
    return store


for suffix in ("", "-wal"):
    shutil.copy(source + suffix, target + suffix)
store = sqlite3.connect(target)
for word in doing:
    if "=" in word:
        store = made_anew(word)
if "old" in doing:
    store.executescript("""DROP INDEX fax_can_idx; ALTER TABLE CONTACT DROP COLUMN faxCan;
                           ALTER TABLE CONTACT ADD COLUMN faxCan VARCHAR; UPDATE CONTACT SET faxCan='';""")
size, = store.execute("PRAGMA page_size").fetchone()
count, = store.execute("PRAGMA page_count").fetchone()
left = count * 2 // 3 if "cut" in doing else count
hit = {page for page, in store.execute(query)} | set(range(left + 1, count + 1))
parts = store.execute("SELECT path, pageno, pagetype, ncell FROM dbstat WHERE name='CONTACT'").fetchall()
gone = {path: cells for path, page, kind, cells in parts if kind == "leaf" and page in hit}
torn = {path.partition("+")[0] for path, page, kind, _ in parts if kind == "overflow" and page in hit}
leaves = [page for _, page, kind, _ in parts if kind == "leaf"]
print(sum(gone.values()) + sum(path.rpartition("/")[0] + "/" not in gone for path in torn))
store.close()
if "log" in doing:
    shutil.copy(source, target)
    shutil.copy(source + "-wal", target + "-wal")
if "frame" in doing:
    with open(target + "-wal", "r+b") as log:
        log.seek(100)
        log.write(noise.randbytes(4))

with open(target, "rb") as file:
    content = bytearray(file.read())
first, second = ((page - 1) * size for page in leaves[1:3])
if "swap" in doing:
    content[first:first + size], content[second:second + size] = (content[second:second + size],
                                                                  content[first:first + size])
if "free" in doing:
    hit.add(int.from_bytes(content[32:36], "big"))
for page in hit - {0}:
    start = (page - 1) * size + (100 if page == 1 else 0)
    content[start:page * size] = noise.randbytes(page * size - start)
if "header" in doing:
    content[:100] = noise.randbytes(100)
with open(target, "wb") as file:
    file.write(content[:left * size])
