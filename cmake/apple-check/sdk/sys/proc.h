// Darwin's process states (sys/proc.h), which glibc lacks. Transcribed from Apple's
// open-source headers for the Apple-target check only; the rules of ZdFoundationSdk.h apply.
#pragma once

// opensource.apple.com/source/xnu/xnu-4903.221.2/bsd/sys/proc.h
#define SZOMB 5  // awaiting collection by parent
