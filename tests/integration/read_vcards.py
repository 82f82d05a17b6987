"""Reads vCards with a library that is not ours and prints them as JSON: read_vcards.py FILE...

Of its own, since the library belongs to the system's Python, which need not be the one that runs the tests.
"""

import json
import sys

import vobject

cards = {}
for name in sys.argv[1:]:
    with open(name, encoding="cp1252", newline="") as file:
        card = vobject.readOne(file.read())
    person, place = card.n.value, card.adr.value
    cards[name] = {
        "version": card.version.value, "display-name": card.fn.value,
        "last-name": person.family, "first-name": person.given, "middle-initial": person.additional,
        "salutation": person.prefix, "company": card.org.value[0], "title": card.title.value,
        "phones": [phone.value for phone in card.contents["tel"]], "e-mail": card.email.value,
        "web-address": card.url.value, "street": place.street, "city": place.city, "state": place.region,
        "postal-code": place.code, "country": place.country, "bday": card.bday.value,
        "notes": card.note.value, "voice-box": card.contents["x-david-voicebox"][0].value,
        "categories": card.contents["x-david-category"][0].value,
    }
json.dump(cards, sys.stdout)
