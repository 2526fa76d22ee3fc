x = "no end
y = #no date
z = 1e9999
&H
?!
"日本" ＝ é
