// SPDX-License-Identifier: MIT
#pragma once

// The workstations that the rehearsal can stand in for.
enum class Daw { ProTools, StudioOne };

// What a workstation can be told to jump to.
enum class Place { Bar, Marker };
