#pragma once

#include <QQuickWindow>

#include "Control.h"
#include "StallMeter.h"

// What the app does on command. Window and meter outlive the commands.
QHash<QByteArray, Control::Command> controlCommands(QQuickWindow& window, StallMeter& meter);

// A running session says goodbye to the service by a request, which needs the event loop a moment longer.
void exitGracefully(QQuickWindow& window);
