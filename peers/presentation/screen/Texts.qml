// SPDX-License-Identifier: Apache-2.0
pragma Singleton
import QtQml

// How texts are put together.
QtObject {
    // Values in the places of %1 and %2, and nothing in what a value holds.
    function fill(pattern: string, first: string, second: string): string {
        return pattern.replace(/%[12]/g, place => place === "%1" ? first : second);
    }

    // Those of the parts that are not empty.
    function joined(parts: var): string {
        return parts.filter(part => part !== "").join("  \u00b7  ");
    }
}
