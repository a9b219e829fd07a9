#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Stores a contact, learns its id from an event, finds it by number and by name, and deletes it: phone_book.py

A client of the directory that needs Python's own library and systemd's busctl. The bus is that of KESTIN_BUS; on the
system bus busctl shows events to root only.
"""
import json
import os
import subprocess
import sys

NAME, PATH = "com.norlan.Kestin.KestinDirectory", "/com/norlan/Kestin/KestinDirectory"
BUS = os.environ.get("KESTIN_BUS", "system")
BUSCTL = ["busctl", "--json=short", {"system": "--system", "session": "--user"}.get(BUS, "--address=" + BUS)]
TEXTS = """contactId loginName salutation firstName name latinFirstName latinName language timezone officePhone
officePhoneCan attendant colleague assistant email fax faxCan voicemail personalHome personalHomeCan personalMobile
personalMobileCan personalFax personalFaxCan personalEmail collaborationId""".split()


def call(method, signature, *arguments):
    """The result of a method of the directory."""
    command = [*BUSCTL, "call", "--", NAME, PATH, "com.norlan.Kestin.KestinInterface", method, signature]
    done = subprocess.run(command + [str(value) for value in arguments], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{method}: {done.stderr.strip()}")
    return json.loads(done.stdout)["data"][0]


class Events:
    """The events of the directory, from the moment when this is made, 30 s at most."""

    def __init__(self):
        rule = f"type='signal',path='{PATH}',interface='com.norlan.Kestin.KestinEvent',member='notify'"
        self.monitor = subprocess.Popen(["timeout", "30", *BUSCTL, "monitor", "--match", rule], text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        told = self.monitor.stderr.readline()  # once it listens
        if not told.startswith("Monitoring"):
            sys.exit("no events: " + told.strip())

    def wait_for(self, event, first):
        """The arguments, by their names, of the next event of this name whose first argument is this."""
        for line in self.monitor.stdout:
            name, arguments = json.loads(line)["payload"]["data"]
            values = {argument[0]: argument[1]["data"] for argument in arguments}
            if name == event and first in list(values.values())[:1]:
                return values
        sys.exit(f"{event} did not come")

    def __del__(self):
        self.monitor.terminate()
        self.monitor.communicate()


def main():
    me = f"example-{os.getpid()}"  # of all clients this one
    texts = {"firstName": "Ada", "name": "Kestrel", "officePhone": "+33 1 99 00 12 34"}
    misc = ["1", "company", "Atelier Brumaire"]
    rest = "false false 0".split() + ["", "", ""] + "0 0 0  0 0 0 0  0".split()  # isPreviewed to the null date
    events = Events()
    code = call("createLocalContact", "s(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))", me,
                *[texts.get(name, "") for name in TEXTS], *misc, *rest)
    if code != 0:
        sys.exit(f"createLocalContact answers {code}")  # 3: there is no room; the others are in bus.md
    contact = dict(zip(TEXTS, events.wait_for("DIR_CONTACTS_CREATED", me)["contacts"][0]))
    print("stored as", contact["contactId"])
    found = [dict(zip(TEXTS, record)) for record in call("getLocalContacts", "s", contact["officePhoneCan"])]
    print(contact["officePhoneCan"], "is", ", ".join(person["firstName"] + " " + person["name"] for person in found))
    call("startSearchContactByName", "ssib", me, "kest", 0, "true")
    count = events.wait_for("DIR_SEARCH_COMPLETED_BY_NAME", me)["nbResults"]
    page = call("getSearchResults", "sii", me, 0, 10)
    print("kest finds", count, "of them", ", ".join(summary[1] + " " + summary[2] for summary in page))
    print("deleted with", call("deleteLocalContact", "ss", me, contact["contactId"]))


if __name__ == "__main__":
    main()
