// SPDX-License-Identifier: MIT
#pragma once

class Report;

// The faults of a show, by what fails.
void midiServerFaults(Report& report);
void dawFaults(Report& report);
void fileFaults(Report& report);
