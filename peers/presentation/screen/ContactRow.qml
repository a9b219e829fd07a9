// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// A contact in the list.
ItemDelegate {
    id: row

    required property int index
    required property string contactId
    required property string displayName
    required property string initials
    required property string number
    required property string company
    required property url photo
    required property bool isOfCompany
    required property bool isLoaded

    readonly property string second: isOfCompany ? qsTr("Company directory") : company !== displayName ? company : ""

    height: Theme.row
    padding: 0
    clip: true
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    focusPolicy: Qt.NoFocus // the list has it
    Accessible.role: Accessible.ListItem
    Accessible.name: Texts.spoken([displayName, second, number])
    Accessible.onPressAction: clicked()

    background: Rectangle {
        color: row.ListView.isCurrentItem && row.ListView.view.activeFocus ? Theme.chosen : row.down ? Theme.line : Theme.surface
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 52 }
            height: 1
            color: Theme.line
        }
    }

    contentItem: Item {
        Avatar {
            id: avatar
            anchors { left: parent.left; leftMargin: Theme.gap; verticalCenter: parent.verticalCenter }
            visible: row.isLoaded
            photo: row.photo
            initials: row.initials
            name: row.displayName
        }
        PlainText {
            id: title
            anchors { left: avatar.right; leftMargin: Theme.gap + 2; right: parent.right; rightMargin: Theme.gap }
            y: below.text === "" ? (parent.height - height) / 2 : 5
            text: Texts.isolated(row.displayName)
        }
        PlainText {
            id: below
            anchors { left: title.left; right: title.right; bottom: parent.bottom; bottomMargin: 5 }
            text: Texts.joined([row.number, row.second])
            color: row.isOfCompany ? Theme.company : Theme.quiet
            font.pixelSize: Theme.small
        }
    }
}
