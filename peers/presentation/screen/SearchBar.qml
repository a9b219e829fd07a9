// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// The search field with what it has found so far, and the photo of the phone's own user.
FocusScope {
    id: bar

    required property ContactListModel contacts
    required property url userPhoto
    signal leftDownwards()

    implicitHeight: 46

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    Avatar {
        id: user
        anchors { left: parent.left; leftMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        visible: bar.userPhoto.toString() !== ""
        width: visible ? 30 : 0
        photo: bar.userPhoto
        Accessible.role: Accessible.Graphic
        Accessible.name: qsTr("Your photo")
    }

    TextField {
        id: field
        anchors { left: user.right; leftMargin: user.visible ? Theme.gap : 0; right: state.left; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        height: 34
        focus: true
        font.pixelSize: Theme.normal
        placeholderText: qsTr("Search")
        placeholderTextColor: Theme.quiet
        color: Theme.text
        selectionColor: Theme.accent
        maximumLength: 200
        horizontalAlignment: Text.AlignLeft
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
        Accessible.name: qsTr("Search by last name")
        background: Rectangle {
            radius: 6
            color: Theme.surface
            border { width: field.activeFocus ? 2 : 1; color: field.activeFocus ? Theme.accent : Theme.line }
        }
        onTextChanged: bar.contacts.searchText = text
        Keys.onEscapePressed: clear()
        Keys.onDownPressed: bar.leftDownwards()
        Keys.onReturnPressed: bar.leftDownwards()
        Keys.onEnterPressed: bar.leftDownwards()
    }

    Item {
        id: state
        anchors { right: parent.right; rightMargin: Theme.gap; top: parent.top; bottom: parent.bottom }
        width: Math.max(counts.implicitWidth, 30) + (busy.running ? busy.width + 4 : 0)

        PlainText {
            id: counts
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            text: bar.contacts.companyCount > 0
                  ? Texts.fill(qsTr("Phone: %1, company: %2"), bar.contacts.phoneCount, bar.contacts.companyCount)
                  : qsTr("Phone: %1").arg(bar.contacts.phoneCount)
            color: Theme.quiet
            font.pixelSize: Theme.small
            Accessible.ignored: false
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        BusyIndicator {
            id: busy
            anchors { right: counts.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
            width: 26
            height: 26
            padding: 2
            running: bar.contacts.isSearching && bar.contacts.searchText !== ""
            visible: running
            palette.dark: Theme.accent
            Accessible.role: Accessible.Indicator
            Accessible.name: qsTr("Searching")
        }
    }
}
