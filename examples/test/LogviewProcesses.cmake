# Starts PROGRAM twice in FOLDER, one process that listens and one that sends the lines of the file LINES to it. Fails unless the
# first shows all of them in their order and draws them, a listener that is told to stop does so with a summary, and a second
# listener at one port is refused.
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")

function(run_script lines)
  file(WRITE "${FOLDER}/script" "set -eu\n${lines}")
  execute_process(COMMAND sh script "${PROGRAM}" "${LINES}" WORKING_DIRECTORY "${FOLDER}"
    RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE complained)
  message("${said}${complained}")
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "the status is ${status}")
  endif()
  set(said "${said}" PARENT_SCOPE)
endfunction()

# Sets `port` once the listener that writes to `file` has told it.
set(wait [==[
wait_for_port() {
  for try in $(seq 300); do
    port=$(sed -n 's/^Listening at .*://p' "$1")
    [ -z "$port" ] || return 0
    sleep 0.1
  done
  echo "nobody listens"; exit 1
}
]==])

run_script("${wait}
\"$1\" listen --port 0 --lines 40 --seconds 60 -o lines.svg > received &
wait_for_port received
\"$1\" send --host localhost --port $port --timed \"$2\"
wait $!
! \"$1\" send --host 127.0.0.1 --port 70000 \"$2\" 2> /dev/null
cut -d' ' -f2- \"$2\" > sent
sed -n 's/^info    //p' received | cmp - sent
grep -q '^40 lines in [0-9.]* s: import 4, store 6, gridder 10' received
grep -q 'Made lines.svg' received
test -s lines.svg
")

run_script("${wait}
\"$1\" listen --port 0 --seconds 60 > stopped &
wait_for_port stopped
printf '\\033[2Jbare {line}\\n' | \"$1\" send --host 127.0.0.1 --port $port --prefix 'probe: ' -
if \"$1\" listen --port $port 2> refused; then exit 1; fi
grep -q 'cannot listen at 127.0.0.1:.*Address already in use' refused
for try in $(seq 100); do if grep -q probe stopped; then break; fi; sleep 0.1; done
kill -INT $!
wait $!
cat stopped
")
if(NOT said MATCHES "\ninfo    probe: .x1b.2Jbare {line}\n1 line: probe 1\n$")
  message(FATAL_ERROR "the listener does not end with its summary")
endif()
