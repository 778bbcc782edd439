"""Exceptions that end a batch. A document never does; its report has a problem instead."""


class BatchError(Exception):
    """The batch cannot go on. Reports that were yielded before are valid."""


class ProgramError(BatchError):
    """The program ztcad is missing, does not run, or does not accept its arguments."""


class ClusterError(BatchError):
    """The scheduler is lost, or the work was cancelled."""


class NoWorkersError(ClusterError):
    """The cluster had no worker for longer than was allowed."""
