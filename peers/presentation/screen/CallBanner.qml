// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Kestin.Presentation

// Who is calling.
Rectangle {
    id: banner

    required property IncomingCall call

    readonly property string title: call.isKnown ? call.displayName : call.isWithheld ? qsTr("Withheld number") : call.number
    readonly property var details: [call.isKnown ? call.number : "", call.company !== title ? call.company : "",
                                    call.isOfCompany ? qsTr("Company directory") : ""]

    height: 84
    visible: call.isRinging
    color: Theme.banner
    Accessible.role: Accessible.AlertMessage
    Accessible.name: visible ? Texts.fill(qsTr("Incoming call: %1"), Texts.spoken([title, ...details]), "") : ""

    Shortcut {
        sequence: "Esc"
        enabled: banner.visible
        onActivated: banner.call.dismiss()
    }
    MouseArea { // what is below waits
        anchors.fill: parent
    }

    Avatar {
        id: avatar
        anchors { left: parent.left; leftMargin: Theme.gap + 4; verticalCenter: parent.verticalCenter }
        width: 60
        photo: banner.call.photo
        initials: banner.call.initials
        name: banner.title
    }
    Column {
        anchors { left: avatar.right; leftMargin: Theme.gap + 4; right: close.left; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        spacing: 2
        PlainText {
            width: parent.width
            text: qsTr("Incoming call")
            color: Theme.bannerText
            font.pixelSize: Theme.small
        }
        PlainText {
            width: parent.width
            text: Texts.isolated(banner.title)
            color: Theme.bannerText
            font { pixelSize: Theme.large; bold: true }
        }
        PlainText {
            width: parent.width
            visible: text !== ""
            text: Texts.joined(banner.details)
            color: Theme.bannerText
        }
    }
    TextButton {
        id: close
        anchors { right: parent.right; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        text: "\u2715"
        ink: Theme.bannerText
        focusPolicy: Qt.NoFocus // Escape does the same
        Accessible.name: qsTr("Close")
        onClicked: banner.call.dismiss()
    }
}
