// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// The window of the phone: search field, list and preview keys; over them a card, a caller, a popup.
ApplicationWindow {
    id: window

    required property ContactListModel contacts
    required property ContactCard card
    required property IncomingCall incomingCall
    required property PopupQueue popups
    required property PreviewKeys previewKeys
    required property Presentation phone
    required property bool isDark

    width: 480
    height: 272
    minimumWidth: 480
    minimumHeight: 272
    visible: true
    title: qsTr("Phone book")
    color: Theme.background
    palette { window: Theme.background; windowText: Theme.text; base: Theme.surface; text: Theme.text; highlight: Theme.accent }

    property Item before: null // had the focus before a card came
    function openCard(contactId: string, from: Item) {
        before = from;
        card.open(contactId);
    }

    Binding { target: Theme; property: "isDark"; value: window.isDark }

    Item {
        id: content
        anchors.fill: parent
        LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
        LayoutMirroring.childrenInherit: true

        Item {
            id: book
            anchors.fill: parent
            visible: !window.card.isOpen

            SearchBar {
                id: bar
                anchors { left: parent.left; right: parent.right; top: parent.top }
                focus: true
                contacts: window.contacts
                userPhoto: window.phone.userPhoto
                onLeftDownwards: {
                    list.forceActiveFocus();
                    list.moveTo(list.currentIndex);
                }
            }
            ContactList {
                id: list
                anchors { left: parent.left; right: keys.left; top: bar.bottom; bottom: parent.bottom }
                contacts: window.contacts
                onChosen: contactId => window.openCard(contactId, list)
                onLeftUpwards: {
                    window.card.close(); // one that is on its way
                    bar.forceActiveFocus();
                }
            }
            PreviewColumn {
                id: keys
                anchors { right: parent.right; top: bar.bottom; bottom: parent.bottom }
                width: count > 0 ? Math.max(120, parent.width / 4) : 0
                keys: window.previewKeys
                onChosen: contactId => window.openCard(contactId, keys)
                onLeftSideways: bar.forceActiveFocus()
            }
        }
        CardView {
            id: cardView
            anchors.fill: parent
            visible: window.card.isOpen
            card: window.card
            onVisibleChanged: {
                const from = window.before && window.before.count > 0 ? window.before : bar;
                popup.giveFocus(visible ? cardView : from);
            }
        }
        CallBanner {
            id: banner
            anchors { left: parent.left; right: parent.right; top: parent.top }
            call: window.incomingCall
        }
        PopupCard {
            id: popup
            anchors.fill: parent
            popups: window.popups
            places: [cardView, list, keys, bar]
        }
    }
}
