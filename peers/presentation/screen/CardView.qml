// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Controls.Basic
import Kestin.Presentation

// A contact: who it is, and what one can call.
FocusScope {
    id: view

    required property ContactCard card

    // What the kinds of numbers and addresses are called.
    readonly property var kinds: ({
        "office": qsTr("Office"), "mobile": qsTr("Mobile"), "home": qsTr("Home"), "fax": qsTr("Fax"),
        "extension": qsTr("Extension"), "email": qsTr("E-mail"), "personalEmail": qsTr("Private e-mail"),
        "im": qsTr("Instant message")
    })

    Accessible.role: Accessible.Pane
    Accessible.name: card.displayName
    Keys.onEscapePressed: card.close()

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    TextButton {
        id: back
        anchors { left: parent.left; top: parent.top; margins: 4 }
        text: view.LayoutMirroring.enabled ? "\u203a" : "\u2039"
        isFramed: false
        font.pixelSize: 24
        Accessible.name: qsTr("Back")
        onClicked: view.card.close()
    }

    Avatar {
        id: avatar
        anchors { left: back.right; top: parent.top; topMargin: 6 }
        width: 52
        photo: view.card.photo
        initials: view.card.initials
        name: view.card.displayName
    }

    Column {
        anchors { left: avatar.right; leftMargin: Theme.gap + 2; right: preview.left; rightMargin: Theme.gap; verticalCenter: avatar.verticalCenter }
        PlainText {
            width: parent.width
            text: Texts.isolated(view.card.displayName)
            font { pixelSize: Theme.large; bold: true }
            Accessible.ignored: false
            Accessible.role: Accessible.Heading
            Accessible.name: view.card.displayName
        }
        PlainText {
            readonly property var details: [view.card.job, view.card.company !== view.card.displayName ? view.card.company : "",
                                            view.card.isOfCompany ? qsTr("Company directory") : ""]
            width: parent.width
            visible: text !== ""
            text: Texts.joined(details)
            color: view.card.isOfCompany ? Theme.company : Theme.quiet
            font.pixelSize: Theme.small
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: Texts.spoken(details)
        }
    }

    TextButton {
        id: preview
        anchors { right: parent.right; rightMargin: Theme.gap; verticalCenter: avatar.verticalCenter }
        visible: !view.card.isOfCompany
        width: visible ? implicitWidth : 0
        text: view.card.isPreviewed ? "\u2605" : "\u2606"
        font.pixelSize: Theme.large
        checkable: false
        Accessible.name: view.card.isPreviewed ? qsTr("Take off the preview keys") : qsTr("Put on a preview key")
        onClicked: view.card.setPreviewed(!view.card.isPreviewed)
    }

    ListView {
        id: lines
        anchors { left: parent.left; right: parent.right; top: avatar.bottom; topMargin: 6; bottom: parent.bottom }
        clip: true
        focus: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        model: view.card.numbers.concat(view.card.addresses)
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Numbers and addresses")
        ScrollBar.vertical: ScrollBar {}
        Keys.onReturnPressed: event => { if (currentItem && !event.isAutoRepeat) currentItem.clicked() }
        Keys.onEnterPressed: event => { if (currentItem && !event.isAutoRepeat) currentItem.clicked() }

        delegate: AbstractButton {
            id: entry
            required property int index
            required property var modelData
            readonly property bool canBeCalled: index < view.card.numbers.length

            width: ListView.view.width
            height: Theme.touch
            focusPolicy: Qt.NoFocus // the list has it
            enabled: canBeCalled
            Accessible.role: canBeCalled ? Accessible.Button : Accessible.StaticText
            Accessible.name: Texts.fill(canBeCalled ? qsTr("Call %1 %2") : "%1 %2", view.kinds[modelData.kind], modelData.value)
            onClicked: if (canBeCalled) view.card.call(modelData.value)

            background: Rectangle {
                color: entry.down || entry.ListView.isCurrentItem && lines.activeFocus ? Theme.chosen : Theme.surface
                Rectangle {
                    anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: Theme.gap }
                    height: 1
                    color: Theme.line
                }
            }
            contentItem: Item {
                PlainText {
                    id: kind
                    anchors { left: parent.left; leftMargin: Theme.gap + 4; verticalCenter: parent.verticalCenter }
                    width: 110
                    text: view.kinds[entry.modelData.kind]
                    color: Theme.quiet
                    font.pixelSize: Theme.small
                }
                PlainText {
                    anchors { left: kind.right; leftMargin: Theme.gap; right: parent.right; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
                    text: Texts.isolated(entry.modelData.value)
                    color: entry.canBeCalled ? Theme.accent : Theme.text
                }
            }
        }
    }
}
