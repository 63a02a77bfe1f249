import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

Window {
    visible: true
    title: "Driver Manager"
    width: 450
    height: 230
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: "#ececec"

    component Inter: Text {
        font.family: "Inter"
        font.pixelSize: 13
    }

    component Card: RowLayout {
        id: card
        required property var driver
        spacing: 16
        Layout.fillWidth: true
        Layout.leftMargin: 24
        Layout.rightMargin: 24

        Rectangle {
            implicitWidth: 36
            implicitHeight: 36
            radius: 18
            border.width: 2
            color: card.driver.enabled ? "black" : "white"
            Image {
                anchors.centerIn: parent
                sourceSize: Qt.size(22, 22)
                source: "file:" + card.driver.icon
            }
        }
        ColumnLayout {
            spacing: 2
            Inter { text: card.driver.name; font.pixelSize: 15; font.weight: Font.DemiBold; Layout.fillWidth: true }
            Inter { text: card.driver.state; font.weight: Font.DemiBold; color: "#8e8e93" }
        }
        Button {
            id: button
            text: card.driver.action
            visible: text !== ""
            horizontalPadding: 18
            verticalPadding: 7
            onClicked: card.driver.ask("activation")
            contentItem: Inter { text: button.text; color: "white" }
            background: Rectangle { color: "black"; radius: height / 2 }
        }
        ToolButton {
            implicitWidth: 16
            text: "⌄"
            background: null
            onClicked: menu.open()
            Accessible.name: card.driver.name + " actions"
            Menu {
                id: menu
                MenuItem { text: "Refresh"; onTriggered: card.driver.ask("properties") }
                MenuItem { text: "Remove"; onTriggered: card.driver.ask("deactivation") }
            }
        }
    }

    Rectangle {
        width: parent.width
        height: 40
        color: drivers.color
        RowLayout {
            anchors.fill: parent
            anchors.margins: 10
            Image {
                sourceSize: Qt.size(20, 20)
                source: "file:" + drivers.icon
            }
            Inter { text: drivers.banner; font.pixelSize: 12; Layout.fillWidth: true }
        }
    }
    Rectangle {
        x: 25
        y: 68
        width: 400
        height: 134
        border.width: 2
        border.color: "#dbdbdb"
        ColumnLayout {
            anchors.fill: parent
            anchors.margins: 2
            Card { driver: drivers.all[0] }
            Rectangle { implicitHeight: 1; color: "#e5e5e5"; Layout.fillWidth: true }
            Card { driver: drivers.all[1] }
        }
    }
}
