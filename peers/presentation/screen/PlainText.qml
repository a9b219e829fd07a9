// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Kestin.Presentation

// Text from elsewhere, shown as it is: no markup is read from it.
Text {
    textFormat: Text.PlainText
    elide: Text.ElideRight
    maximumLineCount: 1
    horizontalAlignment: Text.AlignLeft
    verticalAlignment: Text.AlignVCenter
    color: Theme.text
    font.pixelSize: Theme.normal
    Accessible.ignored: true // what it belongs to has the name
}
