#pragma once

// Animation and navigation: timers on one clock, paths, the navigator.

#include <zk/_zkoglextools/navigator.h>
#include <zk/_zkoglextools/ogltimer.h>
#include <zk/_zkoglextools/sequencer.h>
#include <zk/_zkoglextools/way.h>
