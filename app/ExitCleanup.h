#pragma once

struct _XDisplay;

// The one way out of the process: destroys the toolkit's context, gives the last messages two seconds to
// leave, and exits with `status`. The windows go with the context; called from inside the dispatch of an
// event, where the toolkit puts the destruction off, they go with the process. `message` documents the call
// only; it is shown nowhere. Entered again while it runs (from a handler that the destroying sets off), it
// ends the process with the first status.
[[noreturn]] void ExitCleanup(int status, char const* message);

// To be told by an X error handler before it calls ExitCleanup. The handler may run inside a round trip of
// `connection`, where closing the connection would wait forever; ExitCleanup then cuts it off instead, which
// takes the windows away as well.
void NoteXFailure(_XDisplay* connection);
