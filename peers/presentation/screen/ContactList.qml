// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// Whom the search has found.
ListView {
    id: list

    required property ContactListModel contacts
    signal chosen(string contactId)
    signal leftUpwards()

    model: contacts
    clip: true
    reuseItems: true
    cacheBuffer: Theme.row
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Contacts")
    ScrollBar.vertical: ScrollBar { policy: list.contentHeight > list.height ? ScrollBar.AsNeeded : ScrollBar.AlwaysOff }

    Connections {
        target: list.contacts
        function onShownAnew() {
            list.forgetChosen();
            list.currentIndex = list.count > 0 ? 0 : -1;
            list.positionViewAtBeginning();
        }
        function onPageRead() {
            const row = list.contacts.rowOf(list.chosenId);
            if (row >= 0)
                list.currentIndex = row;
            else if (list.isToBeNoted)
                list.noteChosen();
        }
    }
    onCountChanged: if (currentIndex >= count) currentIndex = count - 1

    // Whom somebody has chosen stays chosen when others come or go, as far as the pages that are looked at tell.
    property string chosenId
    property bool isToBeNoted: false // when the row is there
    function noteChosen() {
        chosenId = currentItem && currentItem.isLoaded ? currentItem.contactId : "";
        isToBeNoted = chosenId === "";
    }
    function forgetChosen() {
        chosenId = "";
        isToBeNoted = false;
    }
    function moveTo(row: int) {
        currentIndex = Math.min(count - 1, Math.max(0, row));
        noteChosen();
    }
    onActiveFocusChanged: if (activeFocus && chosenId === "") noteChosen()
    onMovementStarted: forgetChosen() // somebody looks elsewhere
    onLeftUpwards: forgetChosen()

    delegate: ContactRow {
        width: ListView.view.width
        onClicked: {
            if (!isLoaded)
                return;
            list.forceActiveFocus();
            list.moveTo(index);
            list.chosen(contactId);
        }
    }

    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) choose() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) choose() }
    Keys.onEscapePressed: leftUpwards()
    Keys.onUpPressed: if (currentIndex <= 0) leftUpwards(); else moveTo(currentIndex - 1)
    Keys.onDownPressed: moveTo(currentIndex + 1)
    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(height / Theme.row) - 1);
        if (event.key === Qt.Key_PageDown)
            moveTo(currentIndex + page);
        else if (event.key === Qt.Key_PageUp)
            moveTo(currentIndex - page);
        else if (event.key === Qt.Key_Home)
            moveTo(0);
        else if (event.key === Qt.Key_End)
            moveTo(count - 1);
        else
            return;
        event.accepted = true;
    }

    function choose() {
        if (currentItem && currentItem.isLoaded)
            chosen(currentItem.contactId);
    }

    Rectangle {
        anchors.centerIn: parent
        width: message.implicitWidth + 4 * Theme.gap
        height: Theme.touch
        radius: 6
        visible: message.text !== ""
        color: Theme.background

        PlainText {
            id: message
            anchors.centerIn: parent
            text: !list.contacts.isReachable ? qsTr("The directory does not answer")
                  : list.count === 0 && !list.contacts.isSearching ? qsTr("Nobody found") : ""
            color: Theme.quiet
            Accessible.ignored: text === ""
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
