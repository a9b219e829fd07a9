// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Kestin.Presentation

// Who is calling.
Rectangle {
    id: banner

    required property IncomingCall call

    readonly property string title: call.isKnown ? call.displayName : call.isWithheld ? qsTr("Withheld number") : call.number
    readonly property string second: call.isKnown
        ? [call.number, call.company !== title ? call.company : "", call.isOfCompany ? qsTr("Company directory") : ""].filter(part => part !== "").join("  \u00b7  ")
        : qsTr("Incoming call")

    height: 84
    visible: call.isRinging
    color: Theme.banner
    Accessible.role: Accessible.AlertMessage
    Accessible.name: visible ? qsTr("Incoming call: %1, %2").arg(title).arg(second) : ""

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
        spacing: 4
        PlainText {
            width: parent.width
            text: banner.title
            color: Theme.bannerText
            font { pixelSize: Theme.large + 2; bold: true }
        }
        PlainText {
            width: parent.width
            text: banner.second
            color: Theme.bannerText
        }
    }
    TextButton {
        id: close
        anchors { right: parent.right; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        text: "\u2715"
        ink: Theme.bannerText
        Accessible.name: qsTr("Close")
        onClicked: banner.call.dismiss()
    }
}
