// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// A button with a text, or one character and a name for who listens.
AbstractButton {
    id: button

    property color ink: Theme.accent
    property bool isFramed: true

    font.pixelSize: Theme.normal
    implicitHeight: Theme.touch
    implicitWidth: Math.max(Theme.touch, label.implicitWidth + 2 * Theme.gap + 4)
    Accessible.name: text
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) clicked() }

    background: Rectangle {
        anchors { fill: parent; margins: 2 }
        radius: 6
        color: button.down ? Qt.alpha(button.ink, 0.25) : "transparent"
        border { width: button.activeFocus ? 2 : button.isFramed ? 1 : 0; color: button.ink }
    }
    contentItem: PlainText {
        id: label
        horizontalAlignment: Text.AlignHCenter
        text: button.text
        color: button.ink
        font: button.font
    }
}
