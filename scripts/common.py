"""What the scripts in Python share."""

import subprocess


def run(*command, **options):
    """The output of a command, which has to succeed."""
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True, **options).stdout


def table(titles, rows, numbers=1):
    """A table in Markdown. Columns from the one called `numbers` on are numbers."""
    def cell(value):
        return f"{value:,}".replace(",", " ") if isinstance(value, int) else str(value)
    marks = ["--:" if column >= numbers else "---" for column in range(len(titles))]
    lines = ["| " + " | ".join(titles) + " |", "|" + "|".join(marks) + "|"]
    return "\n".join(lines + ["| " + " | ".join(map(cell, row)) + " |" for row in rows])
