// Output to the user, and dialogs, on the terminal.

#include "hsk.h"
#include "hsk_control.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const int button_count = 3;

static bool output_to_error = false;
static bool asks_user = true;
static void (*print)(const char *text, void *data) = nullptr;
static void *print_data = nullptr;
static int answers[HSK_ANSWER_COUNT];
static int answers_queued = 0;
static int error_count = 0;
static int warning_count = 0;

static FILE *output()
{
    return output_to_error ? stderr : stdout;
}

void hsk_output_to_error(int to_error)
{
    output_to_error = to_error != 0;
}

void hsk_set_printer(void (*printer)(const char *text, void *data), void *data)
{
    print = printer;
    print_data = data;
}

void hsk_set_asking(int asks)
{
    asks_user = asks != 0;
}

int hsk_error_count()
{
    return error_count;
}

int hsk_warning_count()
{
    return warning_count;
}

int hsk_queue_answer(int button)
{
    if (button < 1 || button > button_count || answers_queued == HSK_ANSWER_COUNT)
        return 1;
    answers[answers_queued++] = button;
    return 0;
}

static int dequeue_answer()
{
    int first = answers[0];
    --answers_queued;
    memmove(answers, answers + 1, sizeof answers - sizeof answers[0]);
    return first;
}

static bool starts_with(const char *string, const char *prefix)
{
    return strncmp(string, prefix, strlen(prefix)) == 0;
}

// Flushes each entry, so that it keeps its order among lines that the process
// prints by other means.
void vc_str_print(const char *text)
{
    text = text ? text : "";
    size_t length = strlen(text);
    error_count += starts_with(text, "ERROR") || starts_with(text, "ABORT") ? 1 : 0;
    warning_count += starts_with(text, "WARNING") ? 1 : 0;
    if (print) {
        print(text, print_data);
        return;
    }
    if (length > 0)
        fwrite(text, 1, length, output());
    if (length == 0 || text[length - 1] != '\n')
        fputc('\n', output());
    fflush(output());
}

static bool has_label(const char *label)
{
    return label && *label;
}

static void print_dialog(const char *kind, const char *message, const char *const *labels)
{
    fprintf(output(), "[%s] %s\n", kind ? kind : "", message ? message : "");
    for (int button = 1; button <= button_count; ++button)
        if (has_label(labels[button - 1]))
            fprintf(output(), "  %d  %s\n", button, labels[button - 1]);
}

// Reads a whole line, so that the end of a long one is not read as the next
// answer.  Returns the number of a button, 0 for an empty line or at the end of
// the input, -1 for anything else.  *ended reports the end of the input.
static int read_number(bool *ended)
{
    char line[16];
    *ended = !fgets(line, sizeof line, stdin);
    if (*ended)
        return 0;
    bool complete = strchr(line, '\n') != nullptr;
    for (int rest = 0; !complete && rest != '\n' && rest != EOF;)
        rest = getc(stdin);
    char *end = nullptr;
    long number = strtol(line, &end, 10);
    if (end == line)
        return *line == '\n' ? 0 : -1;
    return number >= 1 && number <= button_count ? (int)number : -1;
}

static int ask(const char *const *labels, int default_button)
{
    for (;;) {
        fprintf(output(), "Button [%d]: ", default_button);
        fflush(output());
        bool ended = false;
        int number = read_number(&ended);
        if (ended)
            fputc('\n', output());
        if (number == 0)
            return default_button;
        if (number > 0 && has_label(labels[number - 1]))
            return number;
    }
}

int vc_alert(const char *kind, const char *message, const char *first, const char *second,
             const char *third, int default_button)
{
    const char *labels[button_count] = {first, second, third};
    const bool asks = answers_queued == 0 && asks_user;
    if (asks || !print)
        print_dialog(kind, message, labels);
    if (asks)
        return ask(labels, default_button);
    int button = answers_queued > 0 ? dequeue_answer() : default_button;
    if (!print)
        fprintf(output(), "Button [%d]: %d\n", default_button, button);
    fflush(output());
    return button;
}
