;; break.lsp -- loaded by Kolvane right after it has placed a block, when the
;; option "Bruch" is on. It lets the user break the line on which the block
;; sits: the host's own BREAK command asks for the line, then (option "First")
;; for the two points between which the line is opened. The picks are the
;; user's; Escape leaves the line as it is.
(command "._break" pause "_f" pause pause)
(princ)
