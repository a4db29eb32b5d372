// SPDX-License-Identifier: MIT
#pragma once

// The DAWs that the rehearsal can stand in for.
enum class Daw { ProTools, StudioOne };

// What a DAW can be told to jump to.
enum class Target { Bar, Marker };
