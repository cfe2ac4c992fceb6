// The long runs. Each starts what it needs, prints its promises, and ends what it started.
#pragma once

#include "Choice.h"
#include "Report.h"

namespace endurance {

/// `count` times: another client changes displays, then a key is pressed.
void runDisplays(Choice& choice, int count, Report& report);

/// The program is killed `count` times, at any moment of its first start or of its work.
void runKills(Choice& choice, int count, Report& report);

/// `count` starts and ends of each kind: alone, with its window, two and ten at once.
void runStarts(Choice& choice, int count, Report& report);

/// The panel ends and comes again `count` times, then the message bus.
void runPanels(Choice& choice, int count, Report& report);

/// `count` calls of each kind over the message bus, with keys pressed meanwhile.
void runFloods(Choice& choice, int count, Report& report);

} // namespace endurance
