#include "Qt/Foundation/RandomQt.h"

#include <QtCore/QRandomGenerator>

namespace merovanta::qt {

Random::result_type RandomQt::operator()() {
    return QRandomGenerator::system()->generate64();
}

}  // namespace merovanta::qt
