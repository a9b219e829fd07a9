// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Kestin.Presentation

// A photo, or the initials where there is none or until it is there.
Item {
    id: avatar

    property url photo
    property string initials
    property string name

    implicitWidth: 34
    implicitHeight: width

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        visible: picture.status !== Image.Ready
        color: Theme.colorOf(avatar.name)

        PlainText {
            anchors.fill: parent
            horizontalAlignment: Text.AlignHCenter
            text: avatar.initials
            color: "#ffffff"
            font.pixelSize: avatar.width * 0.4
        }
    }

    Image {
        id: picture
        anchors.fill: parent
        source: avatar.photo
        sourceSize: Qt.size(width, height)
        asynchronous: true
    }
}
