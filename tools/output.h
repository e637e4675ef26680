// What vekhost prints: answers to standard output, all else to standard error.

#pragma once

#include "text.h"

struct output_state {
    bool json = false, nul = false; // rows as JSON Lines; a NUL at the end of answers
    bool all_lines = false;         // also the library's lines that are neither errors nor warnings
    strings *collected = nullptr;   // takes the library's lines instead of printing them
};
extern output_state output;

// Everything that the library prints goes through here from now on.
void start_output();
bool is_fault(const string &line); // an error or a warning of the library

void print_answer(const string &text);
void print_answer(const row &row, const string &text); // as JSON, or else the text
void print_facts(const row &row);                      // one a line, or as JSON
void print_rows(const vector<row> &rows); // in columns titled by the keys, or as JSON Lines

// Prints what is wrong to standard error.  Returns false if there is nothing, an empty text.
bool complain(const string &fault);

enum colour { RED = 31, YELLOW = 33 };
string in_colour(FILE *stream, colour colour, const string &text); // on a terminal

// False, after a message, if not all of standard output was written.
bool finish_output();
