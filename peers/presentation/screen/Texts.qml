// SPDX-License-Identifier: Apache-2.0
pragma Singleton
import QtQml

// How texts are put together.
QtObject {
    // Values in the places of %1 and %2, and nothing in what a value holds.
    function fill(pattern: string, first: string, second: string): string {
        return pattern.replace(/%[12]/g, place => place === "%1" ? first : second);
    }

    // A value whose direction is its own: a number beside Arabic letters is still read from the left.
    function isolated(value: string): string {
        return "\u2068" + value + "\u2069";
    }

    // Those of the parts that are not empty, to be seen and to be heard.
    function joined(parts: var): string {
        return parts.filter(part => part !== "").map(isolated).join("  \u00b7  ");
    }
    function spoken(parts: var): string {
        return parts.filter(part => part !== "").join(", ");
    }
}
