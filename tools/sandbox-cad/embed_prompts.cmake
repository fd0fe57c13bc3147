# Turns prompts.tsv into a header with the table as one string literal.
file(READ ${IN} text)
file(WRITE ${OUT} "#pragma once\n// Made from prompts.tsv at build time.\nstatic const char kPromptsTsv[] = R\"tsv(${text})tsv\";\n")
