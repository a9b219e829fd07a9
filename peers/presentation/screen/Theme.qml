// SPDX-License-Identifier: Apache-2.0
pragma Singleton
import QtQuick

// Colours and sizes of the screen, light or dark.
QtObject {
    property bool isDark: false

    readonly property color background: isDark ? "#12161b" : "#eef1f4"
    readonly property color surface: isDark ? "#1c222a" : "#ffffff"
    readonly property color chosen: isDark ? "#27476b" : "#d5e6fa"
    readonly property color line: isDark ? "#313a45" : "#d3d9e0"
    readonly property color text: isDark ? "#eef2f6" : "#15191e"
    readonly property color quiet: isDark ? "#a7b2be" : "#56616d"
    readonly property color accent: isDark ? "#7cbaff" : "#0a5bb8"
    readonly property color company: isDark ? "#e6b566" : "#8a5300"
    readonly property color banner: isDark ? "#0f5132" : "#0d6b3f"
    readonly property color bannerText: "#ffffff"

    readonly property int gap: 8
    readonly property int row: 46
    readonly property int touch: 40 // what a finger hits
    readonly property int large: 18
    readonly property int normal: 14
    readonly property int small: 12

    readonly property var people: ["#3d5a98", "#7a3e8e", "#9b3b54", "#8a4b1d", "#5d6b1f", "#1f6f55", "#21698a", "#5c5470"]

    // The same colour for the same name, each time and on each phone.
    function colorOf(name: string): color {
        let sum = 0;
        for (let i = 0; i < name.length; ++i)
            sum = (sum * 31 + name.charCodeAt(i)) % 65521;
        return people[sum % people.length];
    }
}
