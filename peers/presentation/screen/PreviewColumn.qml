// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// The keys of those whom the phone shows without a search.
ListView {
    id: column

    required property PreviewKeys keys
    signal chosen(string contactId)
    signal leftSideways()

    model: keys
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    activeFocusOnTab: count > 0
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Preview keys")
    onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = 0
    Keys.onEscapePressed: leftSideways()
    Keys.onReturnPressed: event => { if (currentItem && !event.isAutoRepeat) currentItem.clicked() }
    Keys.onEnterPressed: event => { if (currentItem && !event.isAutoRepeat) currentItem.clicked() }

    delegate: AbstractButton {
        id: key
        required property int index
        required property string contactId
        required property string displayName
        required property string initials
        required property url photo

        width: ListView.view.width
        height: Theme.row
        clip: true
        focusPolicy: Qt.NoFocus // the column has it
        Accessible.name: displayName
        onClicked: column.chosen(contactId)

        background: Rectangle {
            anchors { fill: parent; margins: 2 }
            radius: 6
            color: key.down || key.ListView.isCurrentItem && column.activeFocus ? Theme.chosen : Theme.surface
            border { width: 1; color: Theme.line }
        }
        contentItem: Item {
            Avatar {
                id: avatar
                anchors { left: parent.left; leftMargin: 7; verticalCenter: parent.verticalCenter }
                width: 28
                photo: key.photo
                initials: key.initials
                name: key.displayName
            }
            PlainText {
                anchors { left: avatar.right; leftMargin: 6; right: parent.right; rightMargin: 6; verticalCenter: parent.verticalCenter }
                text: Texts.isolated(key.displayName)
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
                maximumLineCount: 2
            }
        }
    }
}
