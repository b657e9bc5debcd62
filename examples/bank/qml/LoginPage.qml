import QtQuick
import QtQuick.Layouts

FocusScope {
    id: page

    property bool busy: false
    // The demonstration account is nobody's.
    property bool asCustomer: false
    signal signedIn(bool asCustomer)

    function signIn(customer: bool): void {
        busy = true;
        asCustomer = customer;
        welcome.start();
    }

    function submit(): void {
        if (busy)
            return;
        userField.error = userName.text.trim() === "" ? qsTr("Enter your user name.") : "";
        passwordField.error = password.text === "" ? qsTr("Enter your password.") : "";
        if (userField.error === "" && passwordField.error === "")
            signIn(true);
    }

    objectName: "loginPage"
    focus: true

    Timer {
        id: welcome
        interval: 900
        onTriggered: page.signedIn(page.asCustomer)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    FocusKeeper {
        view: scroll
    }

    Flickable {
        id: scroll
        anchors.fill: parent
        contentHeight: Math.max(height, form.implicitHeight + 2 * Theme.safeTop)
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true

        ColumnLayout {
            id: form
            x: Theme.columnX(parent.width)
            y: Theme.safeTop + 52
            width: Theme.columnWidth(parent.width)
            spacing: 0

            Logo {
                size: 60
            }
            Text {
                Layout.topMargin: 28
                text: qsTr("Good to see you")
                color: Theme.ink
                font.pixelSize: Theme.display
                font.weight: Font.Bold
                font.letterSpacing: -0.6
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                Layout.topMargin: 6
                Layout.bottomMargin: 32
                text: qsTr("Sign in to Alderbrook Bank")
                color: Theme.inkSoft
                font.pixelSize: Theme.body
            }

            FormField {
                id: userField
                Layout.fillWidth: true
                label: qsTr("User name")

                PrivateInput {
                    id: userName
                    objectName: "userNameInput"
                    viewTag: Privacy.userName
                    focus: true
                    enabled: !page.busy
                    inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
                    Accessible.name: userField.label
                    onTextEdited: userField.error = ""
                    onAccepted: password.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            FormField {
                id: passwordField
                Layout.fillWidth: true
                Layout.topMargin: 18
                label: qsTr("Password")

                PrivateInput {
                    id: password
                    objectName: "passwordInput"
                    viewTag: Privacy.password
                    enabled: !page.busy
                    echoMode: TextInput.Password
                    passwordCharacter: "•"
                    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                    Accessible.name: passwordField.label
                    Accessible.passwordEdit: true
                    onTextEdited: passwordField.error = ""
                    onAccepted: page.submit()
                }
            }

            PrimaryButton {
                objectName: "signInButton"
                Layout.fillWidth: true
                Layout.topMargin: 28
                text: qsTr("Sign in")
                busy: page.busy
                enabled: !page.busy
                onClicked: page.submit()
            }
            SecondaryButton {
                objectName: "demoButton"
                Layout.fillWidth: true
                Layout.topMargin: 12
                text: qsTr("Try the demo account")
                enabled: !page.busy
                onClicked: page.signIn(false)
            }
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - height - 36
            spacing: 8

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock"
                size: 16
                color: Theme.inkFaint
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("We never ask for your password by phone.")
                color: Theme.inkFaint
                font.pixelSize: Theme.caption
            }
        }
    }
}
