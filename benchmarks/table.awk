# Prints rows of columns parted by tabs as a Markdown table, its columns aligned.

{
    for (i = 1; i <= NF; ++i) {
        cell[NR, i] = $i
        width[i] = characters($i) > width[i] ? characters($i) : width[i]
    }
    columns = NF > columns ? NF : columns
}

# An awk that counts bytes counts the first of the two of a micro sign too often.
function characters(text,    copy) {
    copy = text
    return length(text) - gsub(/\302/, "", copy)
}

function row(number, filler,    i, text, line) {
    line = "|"
    for (i = 1; i <= columns; ++i) {
        text = filler == "" ? cell[number, i] : ""
        while (characters(text) < width[i]) {
            text = text (filler == "" ? " " : filler)
        }
        line = line (filler == "" ? " " text " " : filler text filler) "|"
    }
    print line
}

END {
    row(1, "")
    row(1, "-")
    for (n = 2; n <= NR; ++n) {
        row(n, "")
    }
}
