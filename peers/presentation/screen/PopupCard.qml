// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Kestin.Presentation

// What a module wants to be told at once.
Item {
    id: card

    required property PopupQueue popups
    required property list<Item> places // for the focus; the last takes it where it cannot go back

    property Item before: null // the place that had it

    visible: popups.text !== ""

    Rectangle {
        anchors.fill: parent
        color: "#80000000"
    }
    MouseArea { // what is below waits
        anchors.fill: parent
    }
    Rectangle {
        anchors.centerIn: parent
        width: Math.min(parent.width - 40, 420)
        height: Math.min(column.implicitHeight + 24, parent.height - 16)
        radius: 8
        color: Theme.surface
        border { width: 1; color: Theme.line }

        Column {
            id: column
            anchors { fill: parent; margins: 12 }
            spacing: 8
            PlainText {
                id: told
                width: parent.width
                height: Math.min(implicitHeight, card.height - 16 - 24 - 8 - close.height)
                text: card.popups.text
                wrapMode: Text.Wrap
                maximumLineCount: 8
                Accessible.ignored: !card.visible
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
            TextButton {
                id: close
                anchors.horizontalCenter: parent.horizontalCenter
                focus: true
                text: card.popups.waiting > 0 ? qsTr("Next (%1 more)").arg(card.popups.waiting) : qsTr("Close")
                Accessible.description: card.popups.text
                KeyNavigation.tab: close // nowhere else
                KeyNavigation.backtab: close
                onClicked: card.popups.next()
                Keys.onEscapePressed: card.popups.next()
            }
        }
    }
    // Now, or when the last popup is closed.
    function giveFocus(item: Item) {
        if (visible)
            before = item;
        else
            item.forceActiveFocus();
    }

    onVisibleChanged: {
        if (visible) {
            before = Array.from(places).find(place => place.activeFocus) ?? null;
            close.forceActiveFocus();
        } else {
            const isThere = before && before.count !== 0; // a list may have become empty
            (isThere ? before : places[places.length - 1]).forceActiveFocus();
        }
    }
}
