#pragma once

/// Whether windows can be translucent now: without a compositor, what is transparent comes out black. True
/// also when there is no desktop to be seen at all.
bool isDesktopComposited();
