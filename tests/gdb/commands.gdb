set pagination off
set print pretty off
set width 0
set confirm off
set charset UTF-8
break stopHere
run
up
printf "== values\n"
print root
print empty
print invalid
print object
print array
print grown
print shortened
print fromText
print wide
print asked
print fromInt
print fromUnsigned
print fromDouble
print path
print nowhere
printf "== lines\n"
set print pretty on
print root
