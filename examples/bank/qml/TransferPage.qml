pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

FocusScope {
    id: page

    property int account: 0
    readonly property real amountValue: Number(amount.text.replace(",", "."))
    signal sent(string recipient, real amount)

    // The check digit that every card number ends with.
    function isCardNumber(text: string): bool {
        const digits = text.replace(/\D/g, "");
        let sum = 0;
        for (let i = 0; i < digits.length; ++i) {
            const digit = Number(digits[digits.length - 1 - i]);
            sum += i % 2 === 0 ? digit : digit < 5 ? 2 * digit : 2 * digit - 9;
        }
        return digits.length === 16 && sum % 10 === 0;
    }

    function review(): void {
        recipientField.error = recipient.text.trim() === "" ? qsTr("Who should get the money?") : "";
        cardField.error = isCardNumber(cardNumber.text) ? "" : qsTr("Check the 16 digits of the card number.");
        amountField.error = !(amountValue > 0) ? qsTr("Enter an amount.")
                          : amountValue > Ledger.balanceOf(account) ? qsTr("More than the account holds.") : "";
        if (recipientField.error === "" && cardField.error === "" && amountField.error === "")
            confirmation.open();
    }

    function clear(): void {
        for (const input of [recipient, cardNumber, amount, reference])
            input.clear();
    }

    ConfirmTransferDialog {
        id: confirmation
        recipient: recipient.text.trim()
        cardNumber: cardNumber.text
        amount: page.amountValue
        accountName: Ledger.accounts[page.account].name
        onConfirmed: {
            const name = recipient.text.trim();
            const sum = page.amountValue;
            Ledger.transfer(page.account, name, sum, reference.text.trim());
            page.clear();
            page.sent(name, sum);
        }
    }

    FocusKeeper {
        view: scroll
    }

    Flickable {
        id: scroll
        anchors.fill: parent
        anchors.bottomMargin: Theme.tabBarHeight
        contentHeight: form.implicitHeight + form.y + 20
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        pixelAligned: true

        ColumnLayout {
            id: form
            x: Theme.columnX(parent.width)
            y: Theme.safeTop
            width: Theme.columnWidth(parent.width)
            spacing: 16

            Text {
                text: qsTr("Send money")
                color: Theme.ink
                font.pixelSize: Theme.title
                font.weight: Font.Bold
                font.letterSpacing: -0.4
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 8

                Text {
                    text: qsTr("From")
                    color: Theme.inkSoft
                    font.pixelSize: Theme.label
                    font.weight: Font.Medium
                }
                Row {
                    id: chips
                    Layout.fillWidth: true
                    spacing: 8

                    Repeater {
                        model: Ledger.accounts.length

                        AbstractButton {
                            id: chip

                            required property int index
                            readonly property Account account: Ledger.accounts[index]

                            width: (chips.width - 16) / 3
                            height: 76
                            checkable: true
                            autoExclusive: true
                            checked: index === page.account
                            focusPolicy: Qt.StrongFocus
                            Accessible.role: Accessible.RadioButton
                            Accessible.name: account.name
                            onClicked: page.account = index

                            background: Rectangle {
                                radius: Theme.fieldRadius
                                color: chip.checked ? Theme.accentSoft : chip.down ? Theme.line : Theme.surface
                                border.width: chip.checked || chip.visualFocus ? 2 : 1
                                border.color: chip.checked || chip.visualFocus ? Theme.accent : Theme.control
                            }
                            contentItem: Item {
                                Text {
                                    x: 12
                                    y: 12
                                    width: parent.width - 20
                                    text: chip.account.name
                                    color: Theme.ink
                                    elide: Text.ElideRight
                                    font.pixelSize: Theme.caption
                                    font.weight: Font.Medium
                                }
                                PrivateText {
                                    x: 12
                                    y: 42
                                    width: parent.width - 20
                                    text: Ledger.money(chip.account.balance)
                                    font.pixelSize: Theme.caption
                                    color: Theme.inkSoft
                                }
                            }
                        }
                    }
                }
            }

            FormField {
                id: recipientField
                Layout.fillWidth: true
                label: qsTr("Recipient")

                PrivateInput {
                    id: recipient
                    objectName: "recipientInput"
                    viewTag: Privacy.recipient
                    placeholderText: qsTr("Name on the card")
                    maximumLength: 60
                    Accessible.name: recipientField.label
                    onTextEdited: recipientField.error = ""
                    onAccepted: cardNumber.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            FormField {
                id: cardField
                Layout.fillWidth: true
                label: qsTr("Card number")

                PrivateInput {
                    id: cardNumber
                    objectName: "cardNumberInput"
                    viewTag: Privacy.cardNumber
                    groupsDigits: true
                    placeholderText: "0000 0000 0000 0000"
                    inputMethodHints: Qt.ImhDigitsOnly | Qt.ImhSensitiveData
                    Accessible.name: cardField.label
                    onTextChanged: cardField.error = ""
                    onAccepted: amount.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            FormField {
                id: amountField
                Layout.fillWidth: true
                label: qsTr("Amount in euro")

                PrivateInput {
                    id: amount
                    objectName: "amountInput"
                    viewTag: Privacy.amount
                    placeholderText: "0" + Qt.locale().decimalPoint + "00"
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    font.weight: Font.DemiBold
                    validator: RegularExpressionValidator { regularExpression: /\d{0,6}([.,]\d{0,2})?/ }
                    Accessible.name: amountField.label
                    onTextEdited: amountField.error = ""
                    onAccepted: reference.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            FormField {
                id: referenceField
                Layout.fillWidth: true
                label: qsTr("Reference (optional)")

                TextEntry {
                    id: reference
                    objectName: "referenceInput"
                    maximumLength: 60
                    Accessible.name: referenceField.label
                    onAccepted: page.review()
                }
            }

            PrimaryButton {
                objectName: "continueButton"
                Layout.fillWidth: true
                Layout.topMargin: 8
                text: qsTr("Continue")
                onClicked: page.review()
            }
        }
    }
}
